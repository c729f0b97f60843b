#include "Commands.h"
#include "Records.h"

#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/repository/RecordAccess.h>

#include <cstdio>
#include <map>
#include <set>

namespace {

/// A row below another one.
struct Branch {
    std::string label; // column that refers to it
    const RecordDescription* type;
    int key;
};

/// Rows that belong to a row and refer to it themselves.
const struct {
    const RecordDescription& (*parent)();
    const RecordDescription& (*child)();
    std::string_view column;
} childRows[] = {
    {&descriptionOf<StructDetailStyle>, &descriptionOf<StructDetailMaster>, "DetailStyle"},
    {&descriptionOf<StructDetViewRequest>, &descriptionOf<StructDetViewRequestCategory>, "DetViewRequest"},
};

class DetailTree {
public:
    void print(const Branch& root)
    {
        printRow(root, "", "");
        std::printf("\n%s in %s; %s in more than one place.\n",
                    counted(static_cast<long>(m_seen.size()), "row").c_str(), counted(tables(), "table").c_str(),
                    counted(static_cast<long>(m_shared.size()), "row").c_str());
        if (!m_missing.empty())
            throw Failure{kFailed, counted(static_cast<long>(m_missing.size()), "row") +
                                       " that it refers to are missing, the first is " + m_missing.front() +
                                       "; correct the reference with: korodbc edit"};
    }

private:
    using Row = std::pair<std::string, int>; // table, key

    long tables() const
    {
        std::set<std::string> names;
        for (const Row& row : m_seen)
            names.insert(row.first);
        return static_cast<long>(names.size());
    }

    void printRow(const Branch& branch, const std::string& lead, const std::string& below)
    {
        const RecordDescription& type = *branch.type;
        const Row row{std::string(type.table), branch.key};
        const std::string name = row.first + " " + std::to_string(branch.key);
        AnyRecord record(type);
        if (RecordAccess::readByKey(type, long{branch.key}, record.get()) != 1) {
            std::printf("%s%s: MISSING  [%s]\n", lead.c_str(), branch.label.c_str(), name.c_str());
            m_missing.push_back(name);
            return;
        }
        const std::string runName = type.runName < 0 ? "" : cellText(*type.runNameColumn(), record.get());
        const bool again = !m_seen.insert(row).second;
        if (again)
            m_shared.insert(row);
        const std::vector<Branch> branches = branchesOf(type, record.get());
        const std::string label =
            branch.label.empty() || runName.empty() ? branch.label + runName : branch.label + ": " + runName;
        std::printf("%s%s  [%s]%s\n", lead.c_str(), singleLine(label).c_str(), name.c_str(),
                    !again             ? ""
                    : branches.empty() ? "  (shared)"
                                       : "  (shared, see above)");
        for (std::size_t i = 0; !again && i < branches.size(); ++i) {
            const bool last = i + 1 == branches.size();
            printRow(branches[i], below + (last ? "└─ " : "├─ "), below + (last ? "   " : "│  "));
        }
    }

    static std::vector<Branch> branchesOf(const RecordDescription& type, const void* record)
    {
        std::vector<Branch> branches;
        for (const Link& link : linksOf(type, record))
            if (link.column->link == LinkKind::Reference && !link.namesNone() &&
                !isParentColumn(type, *link.column))
                branches.push_back({link.label, &link.column->target(), link.target});
        for (const auto& rows : childRows)
            if (&rows.parent() == &type)
                addChildren(rows.child(), rows.column, type.keyOf(record), branches);
        return branches;
    }

    static bool isParentColumn(const RecordDescription& type, const ColumnDescription& column)
    {
        for (const auto& rows : childRows)
            if (&rows.child() == &type && rows.column == column.name)
                return true;
        return false;
    }

    static void addChildren(const RecordDescription& child, std::string_view column, int parent,
                            std::vector<Branch>& branches)
    {
        for (std::size_t i = 0; i < child.columns.size(); ++i) {
            if (child.columns[i].name != column)
                continue;
            AnyRecords rows(child);
            RecordAccess::readWhere(child, static_cast<int>(i), parent, rows.get());
            for (long row = 0; row < rows.length(); ++row)
                branches.push_back({std::string(child.record.substr(6)), &child, child.keyOf(rows.at(row))});
        }
    }

    std::set<Row> m_seen, m_shared;
    std::vector<std::string> m_missing;
};

} // namespace

void runTree(const GlobalOptions& global, Detail kind, const std::string& name, const std::string& sourceName)
{
    const StartedSession session(global);
    const Source source = sourceNamed(sourceName);
    noteOpenEdits(source);
    const int key = detailNamed(kind, name, source).key;
    const KorDSNRequest request(source.dsn, source.index);
    DetailTree().print({"", &kindOf(kind).root(), key});
}
