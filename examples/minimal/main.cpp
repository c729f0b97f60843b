// A host application in its smallest form: makes a repository, starts the library, lists the detail styles.

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: minimal NEW-FOLDER\n";
        return 2;
    }
    std::string error;
    if (!korodbc::host::buildRepository(argv[1], CATALOGUE, {}, {}, error) ||
        !korodbc::host::openRepository(argv[1], error)) {
        std::cerr << "minimal: " << error << "\n";
        return 1;
    }
    if (KorOdbcDSNDefinitions::initOEDbConnections() != 1 || KorOdbcMan::initializeTables() != 1) {
        std::cerr << "minimal: " << korodbc::host::lastError() << "\n";
        return 1;
    }
    KorArray<KorString> styles;
    StructDetailStyleMarshal::getOrderedRunNameList(styles);
    for (const KorString& style : styles)
        std::cout << style.toUtf8() << "\n";
    korodbc::host::closeRepository();
    return styles.length() > 0 ? 0 : 1;
}
