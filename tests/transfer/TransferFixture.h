#pragma once

#include "support/DetailFixture.h"

#include <korodbc/host/ProgressSink.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>

#include <filesystem>
#include <unistd.h>

/// Beside each style of the fixture a process over it, with the same keys, and a file to export to.
class TransferTest : public DetailTest {
protected:
    using D = KorDetailTableDependencies;
    using P = KorDetailProcessTableDependencies;
    using E = KorODBCDetailStyleExports;
    using M = KorOdbcMan;

    void SetUp() override
    {
        DetailTest::SetUp();
        details::fillProcess(details, details::awkward);
        details::fillProcess(addin, "add-in", 100);
        m_folder = std::filesystem::temp_directory_path() / ("korodbc-Träger-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
        named.clear();
        answerFor = -1;
    }
    void TearDown() override
    {
        D::pInitProgressBar = nullptr;
        D::pUpdateProgressBar = nullptr;
        D::pGetNameForRowFn = nullptr;
        D::m_bKernelNewerThan42 = 1;
        D::m_RunningFromCommand = 0;
        D::mainType = M::kDetailStyle;
        D::detQualifierSetGroup = D::detDimStrategyGroup = D::detAnnotationGroup = D::detBaseCategory = -1;
        P::detProcessCategory = -1;
        P::m_bDeepCopyWithDetailStyles = 0;
        P::ResetDeepCopyInfo();
        korodbc::host::setProgressSink(nullptr);
        DetailTest::TearDown();
        std::filesystem::remove_all(m_folder);
    }
    void again()
    {
        TearDown();
        SetUp();
    }

    KorString file(const char* name = "it's [a] 100% 梁.db") const
    {
        return details::text((m_folder / name).string());
    }
    int exportDetail(E::eType what, long key = 1, eDSN source = details) const
    {
        return E::exportDetail(what, KorOdbcKey(key), source, source == addin ? firstAddin : base, file());
    }
    static int importDetail(E::eType what, long key = 101)
    {
        return E::importDetail(what, KorOdbcKey(key), addin, firstAddin, details, base);
    }
    static long collectProcess(long key = 1)
    {
        P::ResetDeepCopyInfo();
        StructDetailProcessDefinition process;
        return P::GetDependencies(process, key);
    }
    /// Collects a detail of the base and saves it to the base, as the host's copy command does.
    static long copyInPlace(E::eType what)
    {
        P::ResetDeepCopyInfo();
        StructDetailMaster master;
        const bool style = what == E::kDetailStyle;
        if ((style ? D::GetDependenciesFromCommand(master, 1) : collectProcess()) == -1)
            return -1;
        style ? static_cast<void>(D::SetRowNr()) : P::SetRowNr();
        D::mainType = style ? M::kDetailStyle : M::kDetailProcessDefinition;
        Exports::CancelBackupTables(1);
        long key = -1;
        if (style) {
            master = D::m_DetMasterCopy[0];
            key = D::Save(master, 0);
        } else {
            StructDetailProcessDefinition process = P::m_DetailProcessDefinition[0];
            key = P::Save(process, 0);
        }
        Exports::CancelBackupTables(0);
        return key;
    }
    /// All that a style or a process reaches, as text.
    static std::string tree(E::eType what, eDSN dsn, long key, bool withStyles = true)
    {
        const eIndex index = dsn == addin ? firstAddin : base;
        return what == E::kDetailStyle ? details::styleTree(dsn, index, key)
                                       : details::processTree(dsn, index, key, withStyles);
    }
    /// How many rows some tables have; the first eight are of processes.
    static std::string counts(eDSN dsn)
    {
        std::string text;
        for (const char* table :
             {"DetailProcessDefinition", "DetailProcessStep", "DetailProcessCategories", "DetailFilenameSelector",
              "DetailProcessScales", "DetailProcessScalesItem", "DetailProcessMain2CutScale", "DetailStyleMapNew",
              "DetailStyleMapItems", "DetObjQualifierSet", "DetObjQualifierSetGroup", "DetailStyle",
              "DetailMasterTable", "DetViewRequest", "DetObjReprMapItems", "DetBaseCategories", "Linetypes"})
            text += std::to_string(rows(dsn, table).size()) + " ";
        return text;
    }
    template <class... T>
    static std::string lengths(const KorArray<T>&... lists)
    {
        return ((std::to_string(lists.length()) + " ") + ...);
    }
    static std::string processLengths()
    {
        return lengths(P::m_DetailProcessDefinition, P::m_DetailProcessStep, P::m_DetailProcessFileNameSelector,
                       P::m_DetailProcessStyleMap, P::m_DetailProcessScales, P::m_DetailProcessMain2CutScales,
                       P::m_DetailProcessCategory);
    }
    /// The styles that the items of a style map name.
    static std::vector<int> stylesOfMap(eDSN dsn, long key)
    {
        const KorDSNRequest request(dsn, dsn == addin ? firstAddin : base);
        StructDetailStyleMap map;
        EXPECT_EQ(StructDetailStyleMapMarshal::getStructByKey(key, map), 1);
        std::vector<int> styles;
        for (const StructDetailStyleMapItem& item : map.items)
            styles.push_back(item.detailStyle);
        return styles;
    }

    /// Naming callback of the host: keeps what it is asked, and answers `answer` for rows of `answerFor`, else 1.
    static int nameRow(M::eTableType type, M::eTableType root, KorString& name)
    {
        named.push_back({type, root, name.toUtf8()});
        name = L"N'" + name;
        return type == answerFor ? answer : 1;
    }
    static std::string askedTypes()
    {
        std::string types;
        for (const Named& row : named)
            types += std::to_string(row.type) + " ";
        return types;
    }

    struct Named {
        int type, root;
        std::string name;
    };
    static inline std::vector<Named> named;
    static inline int answerFor = -1, answer = 1;

    std::filesystem::path m_folder;
};

/// What the host shows of a progress: titles, percentages with their flags, resets.
struct ProgressRecorder : korodbc::host::ProgressSink {
    Texts seen;
    void title(const KorString& text) override { seen.push_back(text.toUtf8()); }
    void percentage(int percent, int flag) override
    {
        seen.push_back(std::to_string(percent) + "/" + std::to_string(flag));
    }
    void reset() override { seen.emplace_back("reset"); }
};
