// SPDX-License-Identifier: Apache-2.0
// StationWatch: a program that reads everything again and again, asks by the file's indexes for
// what it saw, and tells of rows that are half of one thing and half of another, or that it missed.
#pragma once

#include <string>

namespace tests {

// Until there is a file "closing" in the folder. Prints "torn" and the fields of each such row,
// "missed" and the question that an index answered wrongly, at the end "reads N, found M": the rows
// it read, and the questions that were answered.
int WatchRows(const std::string& folder);

}  // namespace tests
