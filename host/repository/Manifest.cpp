#include "repository/Manifest.h"

#include "database/Table.h"

#include <korodbc/roots/KorString.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <toml++/toml.h>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

std::string sourceName(std::size_t dsn) { return KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8(); }

std::string place(const toml::node& node)
{
    return std::string(Manifest::fileName) + " line " + std::to_string(node.source().begin.line);
}

std::string quotedToml(const std::string& text)
{
    std::ostringstream out;
    out << toml::value<std::string>(text);
    return out.str();
}

} // namespace

Manifest Manifest::standard()
{
    Manifest manifest;
    for (std::size_t dsn = 0; dsn < manifest.connections.size(); ++dsn)
        if (dsn != KorDSNDefinitions::kCountryAddin)
            manifest.connections[dsn] = std::string(fileEngine().scheme) + lowerCase(sourceName(dsn)) + ".db";
    return manifest;
}

bool targetOfConnection(const std::string& connection, const fs::path& folder, ConnectionTarget& target,
                        std::string& error)
{
    const EngineKind& kind = fileEngine();
    for (const std::string_view scheme : {kind.scheme, kind.readOnlyScheme}) {
        if (!connection.starts_with(scheme) || connection.size() == scheme.size())
            continue;
        target = {connection.substr(scheme.size()), scheme == kind.readOnlyScheme};
        if (!target.inMemory())
            target.file = (folder / target.file).lexically_normal().string();
        return true;
    }
    error = "connection \"" + connection + "\" is not understood; write \"" + std::string(kind.scheme) +
            "\" and a file name, or \"" + std::string(kind.readOnlyScheme) + "\" for a file that is only read";
    return false;
}

namespace {

/// What is wrong with a line, of that which the parser takes for granted: UTF-8, names of plain letters, a name
/// behind an opening bracket, texts that end on their line.
const char* unreadable(const std::string& line)
{
    if (KorString::fromUtf8(line).toUtf8() != line)
        return "it is no UTF-8 text";
    const std::string_view text = line;
    const auto skip = [&](std::size_t from) { return std::min(text.find_first_not_of(" \t", from), text.size()); };
    std::size_t start = skip(0);
    if (text.substr(start).starts_with('[')) {
        start = skip(start + 1);
        start = text.substr(start).starts_with('[') ? skip(start + 1) : start;
        const unsigned char c = start < text.size() ? static_cast<unsigned char>(text[start]) : '\0';
        if (std::isalnum(c) == 0 && std::string_view("_-'\"").find(static_cast<char>(c)) == std::string_view::npos)
            return "a name has to follow the bracket";
    }
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            i += quote == '"' && c == '\\' ? 1 : 0;
            quote = c == quote ? '\0' : quote;
        } else if (c == '#') {
            break;
        } else if (c == '"' || c == '\'') {
            quote = c;
            if (text.substr(i).starts_with(std::string(3, c)))
                return "a text stands on one line, between single quotation marks";
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            return "it has letters beyond ASCII outside quotation marks";
        }
    }
    return quote != 0 ? "a text has no closing quotation mark" : nullptr;
}

bool loadText(const fs::path& folder, Manifest& manifest, std::string& error)
{
    const fs::path path = folder / Manifest::fileName;
    std::ifstream in(path, std::ios::binary);
    std::error_code code;
    if (!in && (fs::exists(path, code) || code)) {
        error =
            path.string() + " cannot be read" + (code ? ": " + code.message() : "") + "; check its permissions";
        return false;
    }
    if (!in) {
        error = "no repository in " + folder.string() + " (" + Manifest::fileName +
                " is missing); make one with: korodbc init " + folder.string();
        return false;
    }
    const std::string text((std::istreambuf_iterator<char>(in)), {});
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number)
        if (const char* wrong = unreadable(line)) {
            error = path.string() + " line " + std::to_string(number) + ": " + wrong + "; correct the line";
            return false;
        }
    toml::table root;
    try {
        root = toml::parse(text);
    } catch (const toml::parse_error& problem) {
        error = path.string() + " line " + std::to_string(problem.source().begin.line) + ": " +
                std::string(problem.description()) + "; correct the line";
        return false;
    }
    Manifest read = Manifest::standard();
    if (const auto version = root["version"].value<int>(); !version || *version != 1) {
        error = path.string() + ": \"version = 1\" is missing or another number; this program reads version 1";
        return false;
    }
    for (const auto& [key, node] : root) {
        const std::string_view name = key.str();
        const bool fits = name == "version" || (name == "busy-milliseconds" && node.is_integer()) ||
                          (name == "sources" && node.is_table()) ||
                          (name == "country-addin" && node.is_array_of_tables());
        if (!fits) {
            error = place(node) + ": \"" + std::string(name) +
                    "\" is not understood; write busy-milliseconds = NUMBER, [sources] or [[country-addin]]";
            return false;
        }
    }
    read.busyMilliseconds = root["busy-milliseconds"].value_or(read.busyMilliseconds);
    if (const toml::table* sources = root["sources"].as_table()) {
        for (const auto& [key, node] : *sources) {
            std::size_t dsn = 0;
            while (dsn < read.connections.size() && sourceName(dsn) != key.str())
                ++dsn;
            const auto connection = node.value<std::string>();
            if (dsn == read.connections.size() || !connection) {
                error = place(node) + ": " +
                        (connection ? "there is no data source " + std::string(key.str())
                                    : "the connection has to be a text in quotes");
                return false;
            }
            read.connections[dsn] = *connection;
            ConnectionTarget target;
            if (!targetOfConnection(*connection, folder, target, error)) {
                error = place(node) + ": " + error;
                return false;
            }
        }
    }
    if (const toml::array* addIns = root["country-addin"].as_array()) {
        std::set<std::string> ids;
        for (const toml::node& node : *addIns) {
            const toml::table* entry = node.as_table();
            CountryAddIn addIn;
            if (entry != nullptr)
                addIn = {(*entry)["id"].value_or(std::string()), (*entry)["name"].value_or(std::string()),
                         (*entry)["connection"].value_or(std::string())};
            ConnectionTarget target;
            if (addIn.id.empty() || addIn.connection.empty()) {
                error = place(node) + ": a country add-in needs an id and a connection";
                return false;
            }
            if (!ids.insert(addIn.id).second) {
                error = place(node) + ": the country add-in id \"" + addIn.id + "\" is used twice";
                return false;
            }
            if (!targetOfConnection(addIn.connection, folder, target, error)) {
                error = place(node) + ": " + error;
                return false;
            }
            read.countryAddIns.push_back(std::move(addIn));
        }
    }
    manifest = std::move(read);
    return true;
}

} // namespace

bool Manifest::load(const fs::path& folder, Manifest& manifest, std::string& error)
{
    if (loadText(folder, manifest, error))
        return true;
    for (char& c : error) // what the file says may have line ends
        if (static_cast<unsigned char>(c) < ' ')
            c = ' ';
    return false;
}

bool Manifest::save(const fs::path& folder, std::string& error) const
{
    const fs::path path = folder / fileName, fresh = folder / (std::string(fileName) + ".new");
    {
        std::ofstream out(fresh, std::ios::binary);
        out << "# A repository of configuration databases. Files are relative to this folder.\n"
            << "version = 1\nbusy-milliseconds = " << busyMilliseconds << "\n\n[sources]\n";
        for (std::size_t dsn = 0; dsn < connections.size(); ++dsn)
            if (!connections[dsn].empty())
                out << sourceName(dsn) << " = " << quotedToml(connections[dsn]) << "\n";
        for (const CountryAddIn& addIn : countryAddIns)
            out << "\n[[country-addin]]\nid = " << quotedToml(addIn.id) << "\nname = " << quotedToml(addIn.name)
                << "\nconnection = " << quotedToml(addIn.connection) << "\n";
        out.flush();
        if (!out) {
            error = "cannot write " + fresh.string() + "; check the folder's permissions and free space";
            return false;
        }
    }
    std::error_code code;
    fs::rename(fresh, path, code);
    if (code)
        error = "cannot write " + path.string() + ": " + code.message();
    return !code;
}

} // namespace korodbc::host
