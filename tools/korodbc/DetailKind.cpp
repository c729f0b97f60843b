#include "DetailKind.h"

#include "Records.h"

#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/repository/RecordAccess.h>

const DetailKind& kindOf(Detail kind)
{
    using Exports = KorODBCDetailStyleExports;
    static const DetailKind style{Exports::kDetailStyle, &descriptionOf<StructDetailStyle>, "detail style",
                                  "style", "styles"};
    static const DetailKind process{Exports::kDetailProcess, &descriptionOf<StructDetailProcessDefinition>,
                                    "detail process", "process", "processes"};
    return kind == Detail::Style ? style : process;
}

std::vector<std::string> detailNames(Detail kind)
{
    KorArray<KorString> names;
    RecordAccess::runNames(kindOf(kind).root(), names, true);
    return texts(names);
}

NamedDetail detailNamed(Detail kind, const std::string& nameOrKey, const Source& source)
{
    const DetailKind& of = kindOf(kind);
    const RecordDescription& type = of.root();
    const KorDSNRequest request(source.dsn, source.index);
    requireReadable(type);
    const AnyRecord record(type);
    if (!readRecord(type, nameOrKey, record.get()))
        throw Failure{kNotFound, "there is no " + of.noun + " " + quote(nameOrKey) + " in " + source.name +
                                     nearest(nameOrKey, detailNames(kind)) + "; list them with: korodbc " +
                                     of.plural};
    return {type.keyOf(record.get()), cellText(*type.runNameColumn(), record.get())};
}
