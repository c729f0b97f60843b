#include "support/PairwiseCompaction.h"

#include <algorithm>
#include <sqlite3.h>

namespace pairwise {

namespace {

/// Rows of a query as texts.
std::vector<std::vector<std::string>> query(sqlite3* db, const std::string& sql)
{
    std::vector<std::vector<std::string>> rows;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        return {{sqlite3_errmsg(db)}};
    while (sqlite3_step(statement) == SQLITE_ROW) {
        std::vector<std::string>& row = rows.emplace_back();
        for (int i = 0; i < sqlite3_column_count(statement); ++i)
            row.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, i)));
    }
    sqlite3_finalize(statement);
    return rows;
}

std::size_t columnOf(const Table& table, const std::string& name)
{
    return static_cast<std::size_t>(std::find(table.columns.begin(), table.columns.end(), name) -
                                    table.columns.begin());
}

std::string line(const std::vector<std::string>& row)
{
    std::string text;
    for (const std::string& cell : row)
        text += cell + "|";
    return text;
}

} // namespace

Contents readFile(const std::string& file)
{
    Contents contents;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
        for (const auto& name : query(db, "SELECT name FROM sqlite_master WHERE type = 'table'")) {
            Table& table = contents[name[0]];
            std::string cells;
            for (const auto& column : query(db, "SELECT name FROM pragma_table_info('" + name[0] + "')")) {
                table.columns.push_back(column[0]);
                cells += (cells.empty() ? "quote([" : ", quote([") + column[0] + "])";
            }
            table.rows = query(db, "SELECT " + cells + " FROM [" + name[0] + "] ORDER BY rowid");
        }
    }
    sqlite3_close(db);
    return contents;
}

std::string difference(const Contents& expected, const Contents& actual)
{
    std::string text;
    int lines = 0;
    for (const auto& [name, table] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end() || found->second.columns != table.columns) {
            text += name + " is missing or has other columns\n";
            continue;
        }
        const auto& rows = found->second.rows;
        if (rows.size() != table.rows.size())
            text += name + " has " + std::to_string(rows.size()) + " rows, expected " +
                    std::to_string(table.rows.size()) + "\n";
        for (std::size_t i = 0; i < std::min(rows.size(), table.rows.size()) && lines < 10; ++i) {
            if (rows[i] == table.rows[i])
                continue;
            ++lines;
            text += name + " " + line(rows[i]) + ", expected " + line(table.rows[i]) + "\n";
            if (rows.size() != table.rows.size())
                break;
        }
    }
    for (const auto& [name, table] : actual)
        if (!expected.contains(name))
            text += name + " is new\n";
    return text;
}

bool readTables(Tables& t)
{
    const int results[] = {
        StructDetViewSystemAndBoxMarshal::getTable(t.systems),
        StructDetViewLengthClipMarshal::getTable(t.clips),
        StructDetViewDimStrategyMarshal::getTable(t.dimStrategies),
        StructDetViewArrangeStrategyMarshal::getTable(t.arrangements),
        StructDetArrangerControlMarshal::getTable(t.controls),
        StructDetArrangerStrategyMarshal::getTable(t.strategies),
        StructDetAnnotationTypeMarshal::getTable(t.annotationTypes),
        StructDetailStyleMarshal::getTable(t.styles),
        StructDetObjAnnotationStrategyMarshal::getTable(t.annotations),
        StructDetObjQualifierSetMarshal::getTable(t.qualifierSets),
        StructDetObjReprMapMarshal::getTable(t.maps),
        StructDetViewDimPointSelectionMarshal::getTable(t.points),
        StructDetViewDimRequestLinearMarshal::getTable(t.linears),
        StructDetViewRequestMarshal::getTable(t.requests),
        StructDetViewRequestCategoryMarshal::getTable(t.categories),
        StructDetailProcessDefinitionMarshal::getTable(t.processes),
        StructDetailProcessStepMarshal::getTable(t.steps),
        StructDetailFilenameSelectorMarshal::getTable(t.selectors),
        StructDetailProcessMain2CutScaleMarshal::getTable(t.cutScales),
        StructDetProcessScalesMarshal::getTable(t.scales),
        StructDetailStyleMapMarshal::getTable(t.styleMaps),
    };
    return std::all_of(std::begin(results), std::end(results), [](int result) { return result == 1; });
}

std::string Rule::text() const
{
    std::string text(what);
    if (!where.empty())
        text += " " + std::string(where);
    return member == 0 ? text : text + " " + std::to_string(member);
}

bool Compaction::follows(const char* what, const char* where, int member)
{
    if (!broken.what.empty())
        return broken.member != member || broken.where != where || broken.what != what;
    rules.insert({what, where, member});
    return true;
}

// Equality

/// Members that have to be equal: whole numbers, texts, or reals exactly.
template <class R, class... Member>
bool Compaction::same(const char* what, const R& a, const R& b, Member... members)
{
    int n = 0;
    return ((++n, a.*members == b.*members || !follows("compares", what, n)) && ...);
}

/// Reals that may differ a little.
template <class R, class... Member>
bool Compaction::close(const char* what, const R& a, const R& b, Member... members)
{
    int n = 0;
    const auto near = [&](double x, double y) {
        ++n;
        if (!follows("compares with tolerance", what, n))
            return x == y;
        return (x - y) * (x - y) <= 1e-10 * 1e-10 || !follows("compares the real", what, n);
    };
    return (near(a.*members, b.*members) && ...);
}

template <class T, class Equal>
bool Compaction::sameItems(const char* what, const KorArray<T>& a, const KorArray<T>& b, Equal equal)
{
    if (a.length() != b.length() && follows("compares the number of items of", what))
        return false;
    for (int i = 0; i < std::min(a.length(), b.length()); ++i)
        if (!equal(a[i], b[i]))
            return false;
    return true;
}

bool Compaction::equal(const StructDetViewSystemAndBox& a, const StructDetViewSystemAndBox& b)
{
    using R = StructDetViewSystemAndBox;
    return same("DetViewSystemAndBox", a, b, &R::systemSource, &R::selectMode, &R::viewDirection, &R::boxMode,
                &R::rotationX, &R::rotationZ) &&
           close("DetViewSystemAndBox", a, b, &R::depthFront, &R::depthBack);
}

bool Compaction::equal(const StructDetViewLengthClip& a, const StructDetViewLengthClip& b)
{
    using R = StructDetViewLengthClip;
    return same("DetViewLengthClip", a, b, &R::clipX, &R::clipY, &R::clippingType) &&
           close("DetViewLengthClip", a, b, &R::minimumLength, &R::gap);
}

bool Compaction::equal(const StructDetViewDimStrategy& a, const StructDetViewDimStrategy& b)
{
    using R = StructDetViewDimStrategy;
    using Item = StructDetViewDimStrategyItem;
    return same("DetViewDimStrategyNew", a, b, &R::oneChainPerBoltDiam) &&
           sameItems("DetViewDimStrategyNew", a.items, b.items, [this](const Item& x, const Item& y) {
               return same("DetViewDimStrategyItems", x, y, &Item::description, &Item::type, &Item::requestLinear,
                           &Item::groupEqualDistances, &Item::brokenRunningDimension,
                           &Item::runningDimensionTextAlignment, &Item::hideDimensionPoint);
           });
}

bool Compaction::equal(const StructDetViewArrangeStrategy& a, const StructDetViewArrangeStrategy& b)
{
    using R = StructDetViewArrangeStrategy;
    return same("DetViewArrangeStrategy", a, b, &R::arrangeDirection, &R::alignViews) &&
           close("DetViewArrangeStrategy", a, b, &R::horizontalGap, &R::verticalGap);
}

bool Compaction::equal(const StructDetArrangerControl& a, const StructDetArrangerControl& b)
{
    using R = StructDetArrangerControl;
    using Item = StructDetArrangerControlItem;
    return same("DetArrangerControl", a, b, &R::arrangeGlobally, &R::arrangeInCentre, &R::oppositeAngleAllowed,
                &R::terminateOnFirstFit, &R::useBasePositionOnFailure) &&
           sameItems("DetArrangerControl", a.items, b.items, [this](const Item& x, const Item& y) {
               return same("DetArrangerControl step", x, y, &Item::angle, &Item::preferredDistance,
                           &Item::maxDistance);
           });
}

bool Compaction::equal(const StructDetArrangerStrategy& a, const StructDetArrangerStrategy& b)
{
    using R = StructDetArrangerStrategy;
    using Item = StructDetArrangerStrategyItem;
    return same("DetArrangerStrategy", a, b, &R::arrangeGlobally, &R::arrangeInCenter, &R::terminateOnFirstFit) &&
           sameItems("DetArrangerStrategy", a.items, b.items, [this](const Item& x, const Item& y) {
               return same("DetArrangerStrategy item", x, y, &Item::searchArea, &Item::searchDirection,
                           &Item::minDistance, &Item::maxDistance);
           });
}

bool Compaction::equal(const StructDetAnnotationType& a, const StructDetAnnotationType& b)
{
    using R = StructDetAnnotationType;
    return same("DetAnnotationType", a, b, &R::leaderStyle, &R::contents);
}

bool Compaction::equal(const StructDetailStyle& a, const StructDetailStyle& b)
{
    using R = StructDetailStyle;
    return same("DetailStyle", a, b, &R::viewArrangeStrategy, &R::detailOrientation, &R::objectSelectionStrategy,
                &R::titleFormat, &R::titlePosition, &R::cutViewTitleFormat, &R::cutViewTitlePosition,
                &R::scaleFormat, &R::dateFormat, &R::frameAppearance, &R::objectPosition, &R::automaticClipping) &&
           sameItems("DetailStyle", a.requests, b.requests,
                     [this](int x, int y) { return x == y || !follows("compares", "DetailStyle requests"); });
}

bool Compaction::equal(const StructDetObjAnnotationStrategy& a, const StructDetObjAnnotationStrategy& b)
{
    using R = StructDetObjAnnotationStrategy;
    return same("DetObjAnnotationStrategy", a, b, &R::annotationType, &R::arrangerControl, &R::arrangerStrategy,
                &R::group, &R::annotateOnce, &R::layer, &R::textSize);
}

bool Compaction::equal(const StructDetObjQualifierSet& a, const StructDetObjQualifierSet& b)
{
    using Item = StructDetObjQualifierSetItem;
    return sameItems("DetObjQualifierSet", a.items, b.items, [this](const Item& x, const Item& y) {
        return same("DetObjQualifierSetItem", x, y, &Item::objectQualifier, &Item::modelRole, &Item::filter);
    });
}

bool Compaction::equal(const StructDetObjReprMap& a, const StructDetObjReprMap& b)
{
    using Item = StructDetObjReprMapItem;
    return sameItems("DetObjReprMapsNew", a.items, b.items, [this](const Item& x, const Item& y) {
        return same("DetObjReprMapItems", x, y, &Item::description, &Item::objQualifier,
                    &Item::geometricRestrictions, &Item::depthPosition, &Item::appearance,
                    &Item::annotationStrategy, &Item::lineType, &Item::simplifiedGap, &Item::compassMark);
    });
}

bool Compaction::equal(const StructDetViewDimPointSelection& a, const StructDetViewDimPointSelection& b)
{
    using R = StructDetViewDimPointSelection;
    return same("DetViewDimPointSelection", a, b, &R::type, &R::objects, &R::geometricRestrictions,
                &R::outermostOnly);
}

bool Compaction::equal(const StructDetViewDimRequestLinear& a, const StructDetViewDimRequestLinear& b)
{
    using R = StructDetViewDimRequestLinear;
    return same("DetViewDimRequestLinear", a, b, &R::allowCombine, &R::arrangeAbove, &R::arrangeGlobally,
                &R::direction, &R::groupRelatedDimensions, &R::labelContents, &R::labelPosition,
                &R::oneChainPerObjectInFirstSelection) &&
           sameItems("DetViewDimRequestLinear", a.points, b.points, [this](int x, int y) {
               return x == y || !follows("compares", "DetViewDimRequestLinear points");
           });
}

bool Compaction::equal(const StructDetViewRequest& a, const StructDetViewRequest& b)
{
    using R = StructDetViewRequest;
    return same("DetViewRequest", a, b, &R::systemAndBox, &R::objReprMap, &R::dimStrategy, &R::lengthClipXY,
                &R::usedForCutsAndCallouts, &R::titlePosition, &R::calloutTitleTemplate) &&
           close("DetViewRequest", a, b, &R::scaleFactor, &R::rotation);
}

bool Compaction::equal(const StructDetViewRequestCategory& a, const StructDetViewRequestCategory& b)
{
    using R = StructDetViewRequestCategory;
    return same("DetViewRequestCategories", a, b, &R::baseCategory, &R::detViewRequest);
}

bool Compaction::equal(const StructDetailProcessStep& a, const StructDetailProcessStep& b)
{
    using R = StructDetailProcessStep;
    return same("DetailProcessStep", a, b, &R::category, &R::filenameSelector, &R::alternativeScales,
                &R::dependOnMainView, &R::styleMap, &R::selection, &R::sort, &R::stepOrder, &R::detailsPerSheet,
                &R::fitSheetToDetails, &R::marginX, &R::marginY, &R::detailGap);
}

bool Compaction::equal(const StructDetailFilenameSelector& a, const StructDetailFilenameSelector& b)
{
    using R = StructDetailFilenameSelector;
    return same("DetailFilenameSelector", a, b, &R::folder, &R::nameFormat, &R::firstNumber, &R::digits);
}

bool Compaction::equal(const StructDetailProcessMain2CutScale& a, const StructDetailProcessMain2CutScale& b)
{
    using Item = StructDetailProcessMain2CutScaleItem;
    return sameItems("DetailProcessMain2CutScale", a.items, b.items, [this](const Item& x, const Item& y) {
        return same("DetailProcessMain2CutScale item", x, y, &Item::mainViewScale, &Item::cutScale);
    });
}

bool Compaction::equal(const StructDetProcessScales& a, const StructDetProcessScales& b)
{
    using Item = StructDetProcessScalesItem;
    return sameItems("DetailProcessScales", a.items, b.items, [this](const Item& x, const Item& y) {
        return same("DetailProcessScalesItem", x, y, &Item::scale, &Item::maxLength);
    });
}

bool Compaction::equal(const StructDetailStyleMap& a, const StructDetailStyleMap& b)
{
    using Item = StructDetailStyleMapItem;
    return sameItems("DetailStyleMapNew", a.items, b.items, [this](const Item& x, const Item& y) {
        if (!same("DetailStyleMapItems", x, y, &Item::objQualifierSet, &Item::detailStyle,
                  &Item::detailStyleOverrides))
            return false;
        const bool shortText = x.script.length() <= 2 || y.script.length() <= 2;
        if (shortText && follows("texts of 2 characters do not count"))
            return true;
        return x.script == y.script || !follows("longer texts count");
    });
}

// Steps

template <class R, class Equal>
void Compaction::deduplicate(const char* table, const KorArray<R>& records, Equal equal)
{
    Survivors& map = survivors[table];
    map.clear();
    for (const R& record : records)
        map[record.key] = -1;
    if (!follows("deduplicates", table)) {
        for (auto& [key, survivor] : map)
            survivor = key;
        return;
    }
    for (int i = 0; i < records.length(); ++i) {
        const int key = records[i].key;
        if (map[key] != -1)
            continue;
        for (int j = i + 1; j < records.length(); ++j)
            if (map[records[j].key] == -1 && equal(records[i], records[j]))
                map[records[j].key] = key;
        map[key] = key;
    }
    if (!follows("the first one survives")) {
        // the last one of each group, instead
        Survivors last;
        for (const auto& [key, survivor] : map)
            last[survivor] = key;
        for (auto& [key, survivor] : map)
            survivor = last[survivor];
    }
}

void Compaction::set(const std::string& table, const std::string& column, int value, const std::string& where,
                     int is, int order)
{
    Table& rows = contents[table];
    const std::size_t to = columnOf(rows, column), key = columnOf(rows, where), position = columnOf(rows, "Order");
    const std::string isText = std::to_string(is), orderText = std::to_string(order);
    for (auto& row : rows.rows)
        if (row.at(key) == isText && (order == noOrder || row.at(position) == orderText))
            row.at(to) = std::to_string(value);
}

void Compaction::redirect(const char* table, const char* column, int number, int& field, const char* target,
                          int key, int order)
{
    const Survivors& map = survivors[target];
    const auto found = map.find(field);
    if (found == map.end() || found->second == field || !follows(column, table))
        return;
    field = found->second;
    ++statements;
    set(table, number == 0 ? column : column + std::to_string(number), field, "Key", key, order);
}

void Compaction::remove(const char* table, const char* items, const char* owner)
{
    if (!follows("deletes from", table))
        return;
    const auto removeFrom = [this](const std::string& name, const std::string& where, int key) {
        Table& rows = contents[name];
        const std::size_t column = columnOf(rows, where);
        const std::string text = std::to_string(key);
        std::erase_if(rows.rows, [&](const auto& row) { return row.at(column) == text; });
    };
    for (const auto& [key, survivor] : survivors[table]) {
        if (key == survivor)
            continue;
        removeFrom(table, "Key", key);
        if (items != nullptr && follows("deletes from", items))
            removeFrom(items, owner, key);
    }
}

void Compaction::updateAnnotations()
{
    for (StructDetObjAnnotationStrategy& r : tables.annotations) {
        redirect("DetObjAnnotationStrategy", "AnnotationType", r.annotationType, "DetAnnotationType", r.key);
        redirect("DetObjAnnotationStrategy", "ArrangerControl", r.arrangerControl, "DetArrangerControl", r.key);
        redirect("DetObjAnnotationStrategy", "ArrangerStrategy", r.arrangerStrategy, "DetArrangerStrategy", r.key);
    }
}

void Compaction::updateMaps()
{
    for (StructDetObjReprMap& map : tables.maps) {
        for (StructDetObjReprMapItem& r : map.items) {
            redirect("DetObjReprMapItems", "ObjQualifier", r.objQualifier, "DetObjQualifierSet", r.key, r.order);
            redirect("DetObjReprMapItems", "AnnotationStrategy", r.annotationStrategy, "DetObjAnnotationStrategy",
                     r.key, r.order);
        }
    }
}

void Compaction::updatePoints()
{
    for (StructDetViewDimPointSelection& r : tables.points)
        redirect("DetViewDimPointSelection", "Objects", r.objects, "DetObjQualifierSet", r.key);
}

void Compaction::updateStyleMaps()
{
    for (StructDetailStyleMap& map : tables.styleMaps) {
        for (StructDetailStyleMapItem& r : map.items) {
            redirect("DetailStyleMapItems", "ObjQualifierSet", r.objQualifierSet, "DetObjQualifierSet", r.key,
                     r.order);
            redirect("DetailStyleMapItems", "DetailStyle", r.detailStyle, "DetailStyle", r.key, r.order);
        }
    }
}

void Compaction::deduplicateQualifierSets()
{
    deduplicate("DetObjQualifierSet", tables.qualifierSets, [this](auto& a, auto& b) { return equal(a, b); });
}

void Compaction::compactStyles()
{
    const auto equals = [this](auto& a, auto& b) { return equal(a, b); };
    deduplicate("DetViewSystemAndBox", tables.systems, equals);
    deduplicate("DetAnnotationType", tables.annotationTypes, equals);
    deduplicate("DetArrangerControl", tables.controls, equals);
    deduplicate("DetArrangerStrategy", tables.strategies, equals);
    deduplicate("DetViewArrangeStrategy", tables.arrangements, equals);
    deduplicate("DetViewLengthClip", tables.clips, equals);
    deduplicateQualifierSets();

    const bool early = !follows("references of annotation strategies are rewritten before they are compared");
    if (early)
        deduplicate("DetObjAnnotationStrategy", tables.annotations, equals);
    updateAnnotations();
    if (!early)
        deduplicate("DetObjAnnotationStrategy", tables.annotations, equals);
    updateMaps();
    deduplicate("DetObjReprMapsNew", tables.maps, equals);
    updatePoints();
    deduplicate("DetViewDimPointSelection", tables.points, equals);

    for (StructDetViewDimRequestLinear& r : tables.linears)
        for (int i = 0; i < r.points.length(); ++i)
            redirect("DetViewDimRequestLinear", "Point", i + 1, r.points[i], "DetViewDimPointSelection", r.key);
    deduplicate("DetViewDimRequestLinear", tables.linears, equals);

    for (StructDetViewDimStrategy& strategy : tables.dimStrategies)
        for (StructDetViewDimStrategyItem& r : strategy.items)
            redirect("DetViewDimStrategyItems", "RequestLinear", r.requestLinear, "DetViewDimRequestLinear", r.key,
                     r.order);
    deduplicate("DetViewDimStrategyNew", tables.dimStrategies, equals);

    for (StructDetViewRequest& r : tables.requests) {
        redirect("DetViewRequest", "SystemAndBox", r.systemAndBox, "DetViewSystemAndBox", r.key);
        redirect("DetViewRequest", "ObjReprMap", r.objReprMap, "DetObjReprMapsNew", r.key);
        redirect("DetViewRequest", "DimStrategy", r.dimStrategy, "DetViewDimStrategyNew", r.key);
        redirect("DetViewRequest", "LengthClipXY", r.lengthClipXY, "DetViewLengthClip", r.key);
    }
    deduplicate("DetViewRequest", tables.requests, equals);

    for (StructDetailStyle& r : tables.styles) {
        for (int i = 0; i < r.requests.length(); ++i)
            redirect("DetailStyle", "Request", i + 1, r.requests[i], "DetViewRequest", r.key);
        redirect("DetailStyle", "ViewArrangeStrategy", r.viewArrangeStrategy, "DetViewArrangeStrategy", r.key);
    }
    deduplicate("DetailStyle", tables.styles, equals);

    for (StructDetViewRequestCategory& r : tables.categories)
        redirect("DetViewRequestCategories", "DetViewRequest", r.detViewRequest, "DetViewRequest", r.key);
    deduplicate("DetViewRequestCategories", tables.categories, equals);
    updateStyleMaps();
    deduplicate("DetailStyleMapNew", tables.styleMaps, equals);
}

void Compaction::compactProcesses()
{
    const auto equals = [this](auto& a, auto& b) { return equal(a, b); };
    deduplicate("DetailProcessMain2CutScale", tables.cutScales, equals);
    deduplicate("DetailProcessScales", tables.scales, equals);
    deduplicate("DetailFilenameSelector", tables.selectors, equals);
    updateStyleMaps();
    deduplicate("DetailStyleMapNew", tables.styleMaps, equals);

    for (StructDetailProcessStep& r : tables.steps) {
        redirect("DetailProcessStep", "FilenameSelector", r.filenameSelector, "DetailFilenameSelector", r.key);
        redirect("DetailProcessStep", "AlternativeScales", r.alternativeScales, "DetailProcessScales", r.key);
        redirect("DetailProcessStep", "DependOnMainView", r.dependOnMainView, "DetailProcessMain2CutScale", r.key);
        redirect("DetailProcessStep", "StyleMap", r.styleMap, "DetailStyleMapNew", r.key);
    }
    deduplicate("DetailProcessStep", tables.steps, equals);

    for (StructDetailProcessDefinition& r : tables.processes)
        for (int i = 0; i < r.steps.length(); ++i)
            redirect("DetailProcessDefinition", "Step", i + 1, r.steps[i], "DetailProcessStep", r.key);
}

void Compaction::run(Type type, bool deletes)
{
    // the tables of a type do not depend on those that only the other one takes
    if (type == kProcesses)
        deduplicateQualifierSets();
    else
        compactStyles();
    if (type != kStyles)
        compactProcesses();
    if (!deletes)
        return;
    if (type == kProcesses) {
        remove("DetObjQualifierSet", "DetObjQualifierSetItem", "IdDetObjQualifierSet");
    } else {
        remove("DetViewSystemAndBox");
        remove("DetAnnotationType");
        remove("DetArrangerControl");
        remove("DetArrangerStrategy");
        remove("DetViewArrangeStrategy");
        remove("DetViewLengthClip");
        remove("DetViewDimStrategyNew", "DetViewDimStrategyItems");
        remove("DetObjQualifierSet", "DetObjQualifierSetItem", "IdDetObjQualifierSet");
        remove("DetObjAnnotationStrategy");
        remove("DetObjReprMapsNew", "DetObjReprMapItems");
        remove("DetViewDimPointSelection");
        remove("DetViewDimRequestLinear");
        remove("DetViewRequest");
        remove("DetViewRequestCategories");
        if (!follows("equal styles stay"))
            remove("DetailStyle");
    }
    if (type != kStyles) {
        remove("DetailFilenameSelector");
        remove("DetailProcessMain2CutScale");
        remove("DetailProcessScales", "DetailProcessScalesItem", "DetProcScaleId");
        remove("DetailProcessStep");
        remove("DetailStyleMapNew", "DetailStyleMapItems");
    }
}

void Compaction::renumberQualifierSets()
{
    const Table& sets = contents["DetObjQualifierSet"];
    std::vector<int> keys;
    for (const auto& row : sets.rows)
        keys.push_back(std::stoi(row.at(columnOf(sets, "Key"))));
    std::sort(keys.begin(), keys.end());
    int place = 0;
    for (const int key : keys) {
        if (++place == key)
            continue;
        set("DetObjReprMapItems", "ObjQualifier", place, "ObjQualifier", key);
        set("DetViewDimPointSelection", "Objects", place, "Objects", key);
        set("DetailStyleMapItems", "ObjQualifierSet", place, "ObjQualifierSet", key);
        set("DetObjQualifierSet", "Key", place, "Key", key);
        statements += 4;
        // the items go with their set, in place of what belonged to no set
        Table& items = contents["DetObjQualifierSetItem"];
        const std::size_t owner = columnOf(items, "IdDetObjQualifierSet");
        std::erase_if(items.rows, [&](const auto& row) { return row.at(owner) == std::to_string(place); });
        set("DetObjQualifierSetItem", "IdDetObjQualifierSet", place, "IdDetObjQualifierSet", key);
    }
}

void Compaction::runQualifierSets(Type type, bool deletes)
{
    if (type != kProcesses) {
        deduplicateQualifierSets();
        updateMaps();
        updatePoints();
    }
    updateStyleMaps();
    if (type == kStyles && deletes)
        remove("DetObjQualifierSet", "DetObjQualifierSetItem", "IdDetObjQualifierSet");
    renumberQualifierSets();
}

} // namespace pairwise
