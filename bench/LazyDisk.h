// SPDX-License-Identifier: Apache-2.0
// LazyDisk: this machine's files, whose Flush does nothing: what is written survives a killed
// process, not a power cut. The engine itself has no such mode.
#pragma once

#include "jet/io/StdFile.h"

namespace bench {

class LazyDisk : public jet::io::StdFileSystem {
public:
    [[nodiscard]] std::unique_ptr<jet::io::File> Open(const std::string& path,
                                                      jet::io::OpenMode mode) override;
    [[nodiscard]] std::unique_ptr<jet::io::File> Create(const std::string& path) override;
};

}  // namespace bench
