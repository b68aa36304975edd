// SPDX-License-Identifier: Apache-2.0
// MemoryFiles: Files that lie in memory, and that can be made to refuse.
#pragma once

#include "platform/Files.h"

#include <map>
#include <string>

namespace platform {

// Rule: folders are not kept; any path can be written. Names compare without case.
class MemoryFiles : public Files {
public:
    [[nodiscard]] bool Exists(std::string_view path) const override;
    [[nodiscard]] std::string Read(std::string_view path) const override;
    void Write(std::string_view path, std::string_view content) override;
    void Append(std::string_view path, std::string_view content) override;

    // From now on a write to this path raises `error`; 0 lifts it.
    void RefuseWrites(std::string_view path, int error);
    void Remove(std::string_view path);

private:
    void CheckWritable(const std::string& name) const;

    std::map<std::string, std::string> contents_;  // by lower-case path
    std::map<std::string, int> refused_;
};

}  // namespace platform
