// SPDX-License-Identifier: Apache-2.0
// ProgressTexts: the management system's texts for how far a job has come.
#pragma once

namespace platform {
class ListBox;
}

namespace lodrin {

class ResumeNext;
struct Shop;

// Adds the texts to the list in their stored order and proposes the first.
void ListProgressTexts(const ResumeNext& attempt, Shop& shop, platform::ListBox& list);

}  // namespace lodrin
