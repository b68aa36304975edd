// SPDX-License-Identifier: Apache-2.0
// Entries: how the entries of every list are shown: one line each, which gives way at its end.
#pragma once

class QListView;

namespace platform::qt {

// Rule: an entry is never wider than its list, so there is nothing to be scrolled sideways. What
//       is cut can be read whole in its tip.
void OneLineEach(QListView& list);
// How wide the list had to be to show each entry whole. Units: logical pixels.
[[nodiscard]] int WidestEntry(const QListView& list);

}  // namespace platform::qt
