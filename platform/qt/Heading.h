// SPDX-License-Identifier: Apache-2.0
// Heading: a caption over a control; its mnemonic leads there.
#pragma once

class QLabel;
class QString;
class QWidget;

namespace platform::qt {

// The heading stands in the control's parent, under the name "lbl" + the control's.
// Requires: the control has its name.
[[nodiscard]] QLabel* Heading(const QString& text, QWidget* control);

}  // namespace platform::qt
