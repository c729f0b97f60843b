#include <korodbc/host/ProgressSink.h>
#include <korodbc/roots/KorProgressCtrl.h>

namespace {

std::shared_ptr<korodbc::host::ProgressSink>& installedSink()
{
    static std::shared_ptr<korodbc::host::ProgressSink> sink;
    return sink;
}

} // namespace

void korodbc::host::setProgressSink(std::shared_ptr<ProgressSink> sink) { installedSink() = std::move(sink); }

void KorProgressCtrl::setTitle(const KorString& title)
{
    if (const auto sink = installedSink())
        sink->title(title);
}

void KorProgressCtrl::setPercentage(int percentage, int flag)
{
    if (const auto sink = installedSink())
        sink->percentage(percentage, flag);
}

void KorProgressCtrl::reset()
{
    if (const auto sink = installedSink())
        sink->reset();
}
