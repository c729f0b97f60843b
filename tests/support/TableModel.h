#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

/// What tables, their copies, marks and claims are to be: a plain account of edits under copies, for the tables of
/// several databases and for several programs.
class TableModel {
public:
    static constexpr int databases = 4, types = 3, depths = 4, programs = 3;
    using Rows = std::map<int, std::string>; // name by key

    struct Table {
        Rows rows;
        std::optional<Rows> copies[depths];
        int holder = -1; // the program that has claimed it
    };
    Table tables[databases][types];

    struct Mark {
        bool modified = false, copied = false;
    };
    Mark marks[programs][databases][types][depths];

    bool mayWrite(int program, int database, int type, int depth) const
    {
        const int holder = tables[database][type].holder;
        return marks[program][database][type][depth].modified || holder < 0 || holder == program;
    }
    /// What every write does first. False when the table is another program's.
    bool mark(int program, int database, int type, int depth)
    {
        if (!mayWrite(program, database, type, depth))
            return false;
        Mark& mark = marks[program][database][type][depth];
        if (!mark.modified)
            copy(program, database, type, depth);
        mark.modified = true;
        return true;
    }

    enum class Closing { Ok, Cancel, Update };
    /// Closes a type at a depth in every database.
    void close(int program, int type, int depth, Closing closing)
    {
        for (int database = 0; database < databases; ++database) {
            Mark& mark = marks[program][database][type][depth];
            if (closing == Closing::Update ? !mark.modified : !isConcerned(program, database, type, depth))
                continue;
            Table& table = tables[database][type];
            if (mark.copied) {
                if (closing == Closing::Cancel)
                    table.rows = *table.copies[depth];
                table.copies[depth].reset();
                mark.copied = false;
                if (closing == Closing::Update)
                    copy(program, database, type, depth);
                else
                    release(program, database, type);
            }
            mark.modified = false;
        }
    }
    bool isOpenAnywhere(int program, int type, int depth) const
    {
        for (int database = 0; database < databases; ++database)
            if (isOpen(program, database, type, depth))
                return true;
        return false;
    }
    bool isOpen(int program, int database, int type, int depth) const
    {
        const Mark& mark = marks[program][database][type][depth];
        return mark.modified || mark.copied;
    }

    /// The program ends, however it ends.
    void end(int program)
    {
        for (auto& tablesOf : tables)
            for (Table& table : tablesOf)
                if (table.holder == program)
                    table.holder = -1;
        for (auto& marksOf : marks[program])
            for (auto& marksOfType : marksOf)
                for (Mark& mark : marksOfType)
                    mark = {};
    }
    /// What nobody edits any more comes back.
    void start()
    {
        for (auto& tablesOf : tables)
            for (Table& table : tablesOf)
                if (table.holder < 0)
                    bringBack(table);
    }

    /// A type's table and copies in every database, as text.
    std::string text(int type) const
    {
        std::string out;
        for (const auto& tablesOf : tables) {
            out += text(tablesOf[type].rows);
            for (int depth = 0; depth < depths; ++depth)
                if (tablesOf[type].copies[depth])
                    out += " copy " + std::to_string(depth) + ":" + text(*tablesOf[type].copies[depth]);
            out += "\n";
        }
        return out;
    }
    static std::string text(const Rows& rows)
    {
        std::string out;
        for (const auto& [key, name] : rows)
            out += " " + std::to_string(key) + "=" + name;
        return out;
    }
    /// The marks of a program on a type in every database: modified 1, with a copy 2.
    std::string marksText(int program, int type) const
    {
        std::string out;
        for (int database = 0; database < databases; ++database)
            for (int depth = 0; depth < depths; ++depth)
                out += static_cast<char>('0' + marks[program][database][type][depth].modified +
                                         2 * isOpen(program, database, type, depth));
        return out;
    }

private:
    bool isConcerned(int program, int database, int type, int depth) const
    {
        for (int at = 0; at < depths; ++at)
            if (marks[program][database][type][at].modified)
                return true;
        return marks[program][database][type][depth].copied;
    }
    void copy(int program, int database, int type, int depth)
    {
        Mark& mark = marks[program][database][type][depth];
        Table& table = tables[database][type];
        if (mark.copied)
            return;
        if (table.holder < 0)
            bringBack(table); // what an earlier program left
        table.holder = program;
        table.copies[depth] = table.rows;
        mark.copied = true;
    }
    void release(int program, int database, int type)
    {
        for (const Mark& mark : marks[program][database][type])
            if (mark.copied)
                return;
        tables[database][type].holder = -1;
    }
    /// The deepest copy first, so that the outermost stays.
    static void bringBack(Table& table)
    {
        for (int depth = depths - 1; depth >= 0; --depth)
            if (table.copies[depth]) {
                table.rows = *table.copies[depth];
                table.copies[depth].reset();
            }
    }
};
