// SPDX-License-Identifier: Apache-2.0
#include "tests/support/PowerCut.h"

#include "jet/io/MemoryFile.h"
#include "jet/pages/Journal.h"

#include <ostream>

namespace tests {

std::string NameOf(const PowerCut& cut)
{
    const std::string last = cut.last == LastWrite::Torn ? "Torn" : "Whole";
    return last + (cut.unflushed == Unflushed::Lost ? "UnflushedLost" : "UnflushedKept");
}

void PrintTo(const PowerCut& cut, std::ostream* out)
{
    *out << NameOf(cut);
}

void CopyDatabase(jet::io::MemoryFileSystem& from, const std::string& path,
                  jet::io::MemoryFileSystem& to)
{
    for (const std::string& file : {path, jet::pages::JournalPath(path)}) {
        if (!from.Exists(file)) continue;
        (void)to.Create(file);
        to.Content(file) = from.Content(file);
    }
}

}  // namespace tests
