// What is left of the platform, as a host answers that has nothing of it.

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDatabaseGratingAccess.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>
#include <korodbc/repository/KorDefaults.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KorLogfile.h>
#include <korodbc/roots/KorProgressCtrl.h>
#include <korodbc/roots/KorPromptsProxy.h>
#include <korodbc/roots/KorRegExWrapper.h>
#include <korodbc/roots/KRSettings.h>

namespace {

template <class Record, class Value>
int defaultOf(const KorString& key, Value& value)
{
    const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
    Record record;
    const int result = RecordMarshal<Record>::getStructByKey(key, record);
    if (result == 1)
        value = record.value;
    return result;
}

} // namespace

int kor_odbc_getDefault(const KorString& key, KorString& value)
{
    return defaultOf<StructDefaultString>(key, value);
}
int kor_odbc_getDefault(const KorString& key, int& value) { return defaultOf<StructDefaultInteger>(key, value); }
int kor_odbc_setDefault(const KorString&, int) { return 0; }

void KRRepositoryProxyMan::resetTableCache(int) {}
void KRRepositoryProxyMan::resetAllPreferredSizeData() {}
void KRRepositoryProxyMan::whenSwitched(void (*)()) {}

int KorDatabaseProfileAccess::visitSections(const StructProfileClass&,
                                            const std::function<bool(const StructSection&)>&)
{
    return 0;
}
int KorDatabaseProfileAccess::getProfilesSectionNameListByKeysAllSources(const KorString&, const KorArray<long>&,
                                                                         KorArray<KorString>&)
{
    return 0;
}
int KorDatabaseProfileAccess::decomposeInternalName(const KorString&, KorString&, KorString&) { return 0; }
int KorDatabaseProfileAccess::getCompoundMasterStruct(const KorString&, StructCompoundMaster&) { return 0; }

using Gratings = KorDatabaseGratingAccess;
int Gratings::getGratingItemsNameListByKeys(const KorString&, const KorArray<long>&, KorArray<KorString>&)
{
    return 0;
}
int Gratings::getBearingBarSpacingSubTable(const KorString&, KorArray<StructBearingBarSpacing>&) { return 0; }
int Gratings::getCrossBarSpacingSubTable(const KorString&, KorArray<StructCrossBarSpacing>&) { return 0; }
int Gratings::getBearingBarThicknessSubTable(const KorString&, KorArray<StructBearingBarThickness>&) { return 0; }
int Gratings::getBearingBarWidthSubTable(const KorString&, KorArray<StructBearingBarWidth>&) { return 0; }
int Gratings::getCrossBarSubTable(const KorString&, KorArray<StructCrossBar>&) { return 0; }

AddInManagerInterface* AddInManagerInterface::getInstance() { return nullptr; }

int KRSettings::getValue(const KorString&, KorString&) { return 0; }

KorPromptsProxy* KorPromptsProxy::getInstance()
{
    static KorPromptsProxy prompts;
    return &prompts;
}
void KorPromptsProxy::resetPromptsCache() {}
KorString KorPromptsProxy::getPrompt(const KorString&, unsigned, const KorString& fallback) { return fallback; }

void KorProgressCtrl::setTitle(const KorString&) {}
void KorProgressCtrl::setPercentage(int, int) {}
void KorProgressCtrl::reset() {}

struct KorLogfile::State {};
KorLogfile::KorLogfile(const KorString&) {}
KorLogfile::~KorLogfile() = default;

struct KorRegExWrapper::Engine {};
KorRegExWrapper::KorRegExWrapper() = default;
KorRegExWrapper::KorRegExWrapper(const KorString&, bool) {}
KorRegExWrapper::KorRegExWrapper(KorRegExWrapper&&) noexcept = default;
KorRegExWrapper::~KorRegExWrapper() = default;
bool KorRegExWrapper::setPattern(const KorString&, bool) { return false; }
bool KorRegExWrapper::isValid() const { return false; }
KorString KorRegExWrapper::error() const { return L"this host has no regular expressions"; }
bool KorRegExWrapper::match(const KorRegExText&) const { return false; }
bool KorRegExWrapper::match(const KorRegExText&, KorArray<KorString>&) const { return false; }
bool KorRegExWrapper::search(const KorString&, int, int&, int&) const { return false; }
