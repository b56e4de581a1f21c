// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zelto::cli {

/// From now on a signal that ends the program, such as that of Ctrl+C, ends it when the passing
/// folders are gone. Comes before any other thread is started.
void cleanUpOnSignals();

} // namespace zelto::cli
