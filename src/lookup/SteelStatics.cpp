#include <korodbc/lookup/KorOdbcSteelStatics.h>

int kor_odbc_DSTVstatic_getNumberOfObjects(long& number)
{
    return StructDSTVStaticInB01Marshal::getNumberOfObjects(number);
}

int kor_odbc_DSTVstatic_getObject(long objectNumber, StructDSTVStaticInB01& object)
{
    return StructDSTVStaticInB01Marshal::getObject(objectNumber, object);
}

int kor_odbc_DSTVstatic_getNode(long nodeNumber, StructDSTVStaticInB02& node)
{
    return StructDSTVStaticInB02Marshal::getNode(nodeNumber, node);
}

int kor_odbc_DSTVstatic_getProfile(long objectNumber, KorString& profileName,
                                   StructDSTVStaticInB03::eReferenceAxis& referenceAxis)
{
    return StructDSTVStaticInB03Marshal::getProfile(objectNumber, profileName, referenceAxis);
}

int kor_odbc_DSTVstatic_getObjectProperty(long objectNumber, const KorString& propertyName, KorString& value)
{
    return StructDSTVStaticInB04Marshal::getObjectProperty(objectNumber, propertyName, value);
}
