#pragma once

namespace korodbc::host {

/// Another repository was opened, or the open one closed: whoever asked to be told is told.
void repositorySwitched();

} // namespace korodbc::host
