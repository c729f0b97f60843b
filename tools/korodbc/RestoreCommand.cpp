#include "Commands.h"
#include "DetailFile.h"

#include <cstdio>

void runRestore(const GlobalOptions& global, const RestoreOptions& options)
{
    const Session session(global, Start::Look);
    const Source source = sourceNamed(options.source, true);
    if (source.file == ":memory:")
        throw Failure{kUsage, "data source " + source.name + " has no file; name another one with --source"};
    if (source.readOnly)
        throw Failure{kFailed, "data source " + source.name + " is only read, as repository.toml says; write \"" +
                                   korodbc::host::connectionTo("") + "\" there to restore it"};
    refuseSameFile(options.file, source);
    checkBackup(options.file, source);
    const std::string before = restoreFrom(options.file, source);
    std::printf("Brought back data source %s from %s.\n", source.name.c_str(), options.file.c_str());
    if (!before.empty())
        std::printf("Its state before is kept in %s.\n", before.c_str());
}
