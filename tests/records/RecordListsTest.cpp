#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <unistd.h>

namespace {

struct Case {
    const char* name;
    const char* members;
    const char* list;
    const char* sentence; // of the compiler; empty: the list is right
};

const Case cases[] = {
    {"Right",
     "int key = -1; double real = 0; int order = 0; KorString text; bool flag = false; KorArray<int> rest;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::real, "Real").tolerant(),
        sortOrder(&R::order, "Order").writtenAfter(3), runName(&R::text, "Text"), unstored(&R::flag),
        numberedReferences<Right>(&R::rest, "Rest%d", 8))",
     ""},
    {"Forgotten", "int key = -1; int number = 0; KorString text;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::number, "Number"))",
     "a member of the record is not described"},
    {"ForgottenInPadding", "int key = -1; double real = 0; int last = 0; int forgotten = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::real, "Real"), column(&R::last, "Last"))",
     "a member of the record is not described"},
    {"ForgottenFlag", "int key = -1; bool flag = false; double real = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::real, "Real"))",
     "a member of the record is not described"},
    {"Swapped", "int key = -1; int first = 0; int second = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::second, "S"), column(&R::first, "F"))",
     "the members are described in another order than they are declared"},
    {"SwappedTypes", "int key = -1; KorString text; double real = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::real, "Real"), runName(&R::text, "Text"))",
     "the members are described in another order than they are declared"},
    {"Repeated", "int key = -1; int number = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::number, "A"), column(&R::number, "B"))",
     "a member of the record is described twice"},
    {"Foreign", "int key = -1; int number = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&Right::order, "Order"))",
     "a described member belongs to another record"},
    {"OneName", "int key = -1; int a = 0; int b = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::a, "Same"), column(&R::b, "Same"))",
     "two columns of the record have the same name"},
    {"TwoKeys", "int a = -1; int b = -1;", R"(table("T", inConfiguration), key(&R::a, "A"), key(&R::b, "B"))",
     "the record has two keys"},
    {"TwoRunNames", "KorString a; KorString b;",
     R"(table("T", inConfiguration), runName(&R::a, "A"), runName(&R::b, "B"))", "the record has two run names"},
    {"TwoOwners", "KorString a; KorString b;",
     R"(table("T", inConfiguration), owner(&R::a, "A"), owner(&R::b, "B"))",
     "two columns of the record have the same role"},
    {"StoredFlag", "int key = -1; bool flag = false;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::flag, "Flag"))",
     "a column holds an int, a double or a KorString"},
    {"StoredList", "int key = -1; KorArray<int> list;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::list, "List"))",
     "a column holds an int, a double or a KorString"},
    {"Unkept", "int key = -1; std::string text;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), unstored(&R::text))",
     "a record holds texts, lists of plain values or of described records, and plain values"},
    {"TwoLists", "int key = -1; KorArray<int> a; KorArray<int> b;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), numberedReferences<Right>(&R::a, "A%d", 2),
        numberedReferences<Right>(&R::b, "B%d", 2))",
     "the record has two lists of items"},
    {"Unlisted", "int key = -1; KorArray<Plain> items;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), unstored(&R::items))",
     "the record has a list of what is not described in its source"},
    {"TolerantText", "int key = -1; KorString text;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::text, "Text").tolerant())",
     "only reals are compared with tolerance"},
    {"AfterNothing", "int key = -1; int count = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), itemCount(&R::count, "Count").writtenAfter(2))",
     "a column is written after one that the record does not have"},
    {"Tableless", "int key = -1; int number = 0;", R"(key(&R::key, "Key"), column(&R::number, "Number"))",
     "the list of a record begins with its table"},
    {"Aligned", "int key = -1; alignas(16) int number = 0;",
     R"(table("T", inConfiguration), key(&R::key, "Key"), column(&R::number, "Number"))",
     "the members of the record do not lie one behind the other"},
    {"Constructed", "int key = -1; explicit constexpr Constructed(int value = 0) : key(value) {}",
     R"(table("T", inConfiguration), key(&R::key, "Key"))", "a record is a plain struct"},
};

/// What the compiler says of that source.
std::string compiled(const std::string& source)
{
    namespace fs = std::filesystem;
    const fs::path file = fs::temp_directory_path() / ("lists-" + std::to_string(::getpid()) + ".cpp");
    std::ofstream(file) << source;
    FILE* output = ::popen(
        (KORODBC_COMPILER " -std=c++20 -fsyntax-only -I" KORODBC_PLATFORM " " + file.string() + " 2>&1").c_str(),
        "r");
    std::string text;
    for (char part[4096]; std::fgets(part, sizeof part, output) != nullptr;)
        text += part;
    ::pclose(output);
    fs::remove(file);
    return text;
}

/// The sentences of failed assertions by the record whose list they are about. Some compilers name it before the
/// assertion, some after it.
std::map<std::string, std::set<std::string>> failures(const std::string& output)
{
    static const std::regex assertion(
        "error: static.assert.*failed[^\"]*\"([^\"]+)\"|static assertion failed:? (.*)");
    static const std::regex record("n instantiation of .*(?:Lists<|Described<|Member<|with R = )(\\w+)");
    std::map<std::string, std::set<std::string>> found;
    std::string current, waiting;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_search(line, match, assertion)) {
            if (match[2].matched)
                found[current].insert(match[2]);
            else
                waiting = match[1];
        } else if (std::regex_search(line, match, record)) {
            current = match[1];
            if (!waiting.empty())
                found[current].insert(std::exchange(waiting, {}));
        }
    }
    return found;
}

TEST(RecordListsTest, WrongListsDoNotCompile)
{
    std::string source = "#include <korodbc/records/DescriptionBuilder.h>\n#include <string>\n"
                         "using namespace records;\nstruct Plain { KorString text; };\n";
    for (const Case& one : cases)
        source += std::string("struct ") + one.name + " { " + one.members + " };\ntemplate <std::same_as<" +
                  one.name + "> R>\nconstexpr Entry listOf<R>[] = {" + one.list +
                  "};\ntemplate struct records::Described<" + one.name + ">;\n";
    const std::string output = compiled(source);
    auto found = failures(output);
    for (const Case& one : cases) {
        const std::set<std::string> expected =
            *one.sentence == '\0' ? std::set<std::string>() : std::set<std::string>{one.sentence};
        EXPECT_EQ(found[one.name], expected) << one.name << '\n' << output;
    }
}

} // namespace
