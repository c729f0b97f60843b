#pragma once

#include <korodbc/roots/KorString.h>

#include <memory>

namespace korodbc::host {

/// Shows the progress of long operations. Called on the thread of the operation; must not call the library.
class ProgressSink {
public:
    virtual ~ProgressSink() = default;
    virtual void title(const KorString& title) = 0;
    virtual void percentage(int percentage, int flag) = 0;
    virtual void reset() = 0;
};

/// Installs a display; nullptr for none.
void setProgressSink(std::shared_ptr<ProgressSink> sink);

} // namespace korodbc::host
