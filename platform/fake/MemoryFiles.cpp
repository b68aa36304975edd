// SPDX-License-Identifier: Apache-2.0
#include "platform/fake/MemoryFiles.h"

#include "base/NumberedError.h"
#include "base/Text.h"

namespace platform {

namespace {

constexpr int kFileNotFound = 53;

}  // namespace

bool MemoryFiles::Exists(std::string_view path) const
{
    return contents_.count(base::LowerName(path)) != 0;
}

std::string MemoryFiles::Read(std::string_view path) const
{
    const auto found = contents_.find(base::LowerName(path));
    if (found == contents_.end()) throw base::NumberedError(kFileNotFound);
    return found->second;
}

void MemoryFiles::Write(std::string_view path, std::string_view content)
{
    const std::string name = base::LowerName(path);
    CheckWritable(name);
    contents_[name] = content;
}

void MemoryFiles::Append(std::string_view path, std::string_view content)
{
    const std::string name = base::LowerName(path);
    CheckWritable(name);
    std::string& stored = contents_[name];
    if (!stored.empty() && stored.back() != '\n') stored += "\r\n";
    stored += content;
}

void MemoryFiles::RefuseWrites(std::string_view path, int error)
{
    refused_[base::LowerName(path)] = error;
}

void MemoryFiles::Remove(std::string_view path)
{
    contents_.erase(base::LowerName(path));
}

void MemoryFiles::CheckWritable(const std::string& name) const
{
    const auto found = refused_.find(name);
    if (found != refused_.end() && found->second != 0) throw base::NumberedError(found->second);
}

}  // namespace platform
