#include <korodbc/catalogues/KorDetailObjectCatalogue.h>

int KorDetailObjectCatalogue::getDetObjQualifier(int modelType, int role, KorArray<int>& keys)
{
    constexpr int any = -1;
    bool empty = true;
    const int result = scan<StructDetObjQualifier>([&](const StructDetObjQualifier& qualifier) {
        empty = false;
        if ((modelType != any && qualifier.modelType != modelType) || (role != any && qualifier.role != role))
            return true;
        keys.append(qualifier.key);
        return modelType == any || role == any;
    });
    if (result != 1)
        return -1;
    return empty || keys.isEmpty() ? -2 : 1;
}
