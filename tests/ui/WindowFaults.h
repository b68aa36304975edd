// SPDX-License-Identifier: Apache-2.0
// WindowFaults: what is wrong with how a window looks and how it can be used.
#pragma once

#include <QWidget>

#include <string>
#include <vector>

namespace tests {

// One sentence for each: a window that sticks out of the screen, a control that sticks out of what
// holds it, a text that is cut, something to be touched that is too small for a thumb, a control
// that assistive technology could not tell.
//
// Units: logical pixels, so the scale of the screen does not matter.
[[nodiscard]] std::vector<std::string> FaultsOf(QWidget& window);

}  // namespace tests
