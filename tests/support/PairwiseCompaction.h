#pragma once

#include "records/detail/DetailAnnotationRecords.h"
#include "records/detail/DetailObjectRecords.h"
#include "records/detail/DetailProcessRecords.h"
#include "records/detail/DetailStyleRecords.h"
#include "records/detail/DetailViewRecords.h"

#include <compare>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Compaction of detail tables as plainly as it can be said: every record is compared with every later one, column
/// by column. Shares nothing with the library but the record types. For tests, of small databases.
namespace pairwise {

/// A table as it is stored: cells as SQL literals, rows by row id.
struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
};
using Contents = std::map<std::string, Table>;

/// Every table of a database file, read past the host.
Contents readFile(const std::string& file);
/// What the actual contents do not share with the expected ones, the first lines of it; empty when they are equal.
std::string difference(const Contents& expected, const Contents& actual);

using Survivors = std::map<int, int>; // by key

enum Type { kStyles, kProcesses, kAll };

/// One rule of the compaction; the texts are literals.
struct Rule {
    std::string_view what;
    std::string_view where;
    int member = 0;

    friend auto operator<=>(const Rule&, const Rule&) = default;
    std::string text() const;
};

struct Tables {
    KorArray<StructDetViewSystemAndBox> systems;
    KorArray<StructDetViewLengthClip> clips;
    KorArray<StructDetViewDimStrategy> dimStrategies;
    KorArray<StructDetViewArrangeStrategy> arrangements;
    KorArray<StructDetArrangerControl> controls;
    KorArray<StructDetArrangerStrategy> strategies;
    KorArray<StructDetAnnotationType> annotationTypes;
    KorArray<StructDetailStyle> styles;
    KorArray<StructDetObjAnnotationStrategy> annotations;
    KorArray<StructDetObjQualifierSet> qualifierSets;
    KorArray<StructDetObjReprMap> maps;
    KorArray<StructDetViewDimPointSelection> points;
    KorArray<StructDetViewDimRequestLinear> linears;
    KorArray<StructDetViewRequest> requests;
    KorArray<StructDetViewRequestCategory> categories;
    KorArray<StructDetailProcessDefinition> processes;
    KorArray<StructDetailProcessStep> steps;
    KorArray<StructDetailFilenameSelector> selectors;
    KorArray<StructDetailProcessMain2CutScale> cutScales;
    KorArray<StructDetProcessScales> scales;
    KorArray<StructDetailStyleMap> styleMaps;
};

/// The records of the current data source; false when a table cannot be read.
bool readTables(Tables& tables);

class Compaction {
public:
    Compaction(const Tables& records, const Contents& before) : tables(records), contents(before) {}

    void run(Type type, bool deletes);
    void runQualifierSets(Type type, bool deletes);

    Tables tables;
    Contents contents;                          // what the run leaves
    std::map<std::string, Survivors> survivors; // by table
    long statements = 0;                        // of the redirections
    Rule broken;                                // a rule that is not followed, to see whether anybody would notice
    std::set<Rule> rules;                       // that were called upon while none is broken

private:
    /// True unless that rule is the broken one.
    bool follows(const char* what, const char* where = "", int member = 0);
    template <class R, class Equal>
    void deduplicate(const char* table, const KorArray<R>& records, Equal equal);
    void redirect(const char* table, const char* column, int number, int& field, const char* target, int key,
                  int order = noOrder);
    void redirect(const char* table, const char* column, int& field, const char* target, int key,
                  int order = noOrder)
    {
        redirect(table, column, 0, field, target, key, order);
    }
    void set(const std::string& table, const std::string& column, int value, const std::string& where, int is,
             int order = noOrder);
    void remove(const char* table, const char* items = nullptr, const char* owner = "Key");

    template <class R, class... Member>
    bool same(const char* what, const R& a, const R& b, Member... members);
    template <class R, class... Member>
    bool close(const char* what, const R& a, const R& b, Member... members);
    template <class T, class Equal>
    bool sameItems(const char* what, const KorArray<T>& a, const KorArray<T>& b, Equal equal);

    bool equal(const StructDetViewSystemAndBox& a, const StructDetViewSystemAndBox& b);
    bool equal(const StructDetViewLengthClip& a, const StructDetViewLengthClip& b);
    bool equal(const StructDetViewDimStrategy& a, const StructDetViewDimStrategy& b);
    bool equal(const StructDetViewArrangeStrategy& a, const StructDetViewArrangeStrategy& b);
    bool equal(const StructDetArrangerControl& a, const StructDetArrangerControl& b);
    bool equal(const StructDetArrangerStrategy& a, const StructDetArrangerStrategy& b);
    bool equal(const StructDetAnnotationType& a, const StructDetAnnotationType& b);
    bool equal(const StructDetailStyle& a, const StructDetailStyle& b);
    bool equal(const StructDetObjAnnotationStrategy& a, const StructDetObjAnnotationStrategy& b);
    bool equal(const StructDetObjQualifierSet& a, const StructDetObjQualifierSet& b);
    bool equal(const StructDetObjReprMap& a, const StructDetObjReprMap& b);
    bool equal(const StructDetViewDimPointSelection& a, const StructDetViewDimPointSelection& b);
    bool equal(const StructDetViewDimRequestLinear& a, const StructDetViewDimRequestLinear& b);
    bool equal(const StructDetViewRequest& a, const StructDetViewRequest& b);
    bool equal(const StructDetViewRequestCategory& a, const StructDetViewRequestCategory& b);
    bool equal(const StructDetailProcessStep& a, const StructDetailProcessStep& b);
    bool equal(const StructDetailFilenameSelector& a, const StructDetailFilenameSelector& b);
    bool equal(const StructDetailProcessMain2CutScale& a, const StructDetailProcessMain2CutScale& b);
    bool equal(const StructDetProcessScales& a, const StructDetProcessScales& b);
    bool equal(const StructDetailStyleMap& a, const StructDetailStyleMap& b);

    void updateAnnotations();
    void updateMaps();
    void updatePoints();
    void updateStyleMaps();
    void deduplicateStyles();
    void deduplicateQualifierSets();
    void compactStyles();
    void compactProcesses();
    void renumberQualifierSets();

    static constexpr int noOrder = -1000000;
};

} // namespace pairwise
