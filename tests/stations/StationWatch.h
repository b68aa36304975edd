// SPDX-License-Identifier: Apache-2.0
// StationWatch: a program that reads everything again and again, and tells of rows that are half of
// one thing and half of another.
#pragma once

#include <string>

namespace tests {

// Until there is a file "closing" in the folder. Prints "torn" and the fields of each such row, at
// the end "reads N", the rows it read.
int WatchRows(const std::string& folder);

}  // namespace tests
