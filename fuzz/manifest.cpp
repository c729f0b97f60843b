// Any text as a manifest: refused with one line, or read, and then the same after it was saved.

#include "repository/Manifest.h"

#include "Fuzz.h"

using korodbc::host::CountryAddIn;
using korodbc::host::Manifest;

namespace {

bool load(Manifest& manifest)
{
    std::string error;
    const bool loaded = Manifest::load(ownFolder(), manifest, error);
    require(loaded == error.empty(), loaded ? "an error although it was read: " + error : "no reason is given");
    require(error.find('\n') == std::string::npos, "more than one line: " + error);
    return loaded;
}

bool same(const Manifest& one, const Manifest& other)
{
    bool same = one.connections == other.connections && one.busyMilliseconds == other.busyMilliseconds &&
                one.countryAddIns.size() == other.countryAddIns.size();
    for (std::size_t i = 0; same && i < one.countryAddIns.size(); ++i) {
        const CountryAddIn &a = one.countryAddIns[i], &b = other.countryAddIns[i];
        same = a.id == b.id && a.name == b.name && a.connection == b.connection;
    }
    return same;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    write(ownFolder() / Manifest::fileName, textOf(data, size));
    Manifest read, again;
    if (!load(read))
        return 0;
    std::string error;
    require(read.save(ownFolder(), error), error);
    require(load(again) && same(read, again), "saved and loaded it is another manifest");
    return 0;
}
