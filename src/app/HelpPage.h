#pragma once

#include "model/Resources.h"

namespace brimwick {

/// Opens the page in the user's browser, which works without a network. A desktop without a browser is told
/// of on stderr by the toolkit only. Main thread only; never waits for the browser.
void openHelpPage(const Resources& resources);

} // namespace brimwick
