// SPDX-License-Identifier: Apache-2.0
// FaultFileSystem: another file system whose machine loses power at a chosen write.
#pragma once

#include "jet/io/File.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tests {

// What the last operation before the power cut leaves behind.
enum class LastWrite { Whole, Torn };

// What a disk may do with writes that no flush has confirmed. Shuffled: some are lost and the rest
// is stored in any order, and names of files are lost or come back (UnflushedWrites).
enum class Unflushed { Kept, Lost, Shuffled };

// Passes every call on, and counts writes, truncations, flushes, creations, removals and renames.
//
//     FaultFileSystem disk(memory);
//     disk.PullThePlugAfter(7);        // the eighth counted operation fails, and all after it
//     EXPECT_THROW(Work(disk), base::NumberedError);
//     disk.Reboot();                   // what is stored now is what the next start finds
//
// Rule: after the cut every call on a file opened before it raises 3043, and so does the file
//       system, until Reboot.
class FaultFileSystem : public jet::io::FileSystem {
public:
    explicit FaultFileSystem(jet::io::FileSystem& below);
    ~FaultFileSystem() override;

    // `operations` more of the counted operations succeed. With LastWrite::Torn the failing one, if
    // it is a write, stores its first half (at least one byte).
    void PullThePlugAfter(std::size_t operations, LastWrite last = LastWrite::Whole,
                          Unflushed unflushed = Unflushed::Kept);
    // From now on until a Reboot nothing but a flush is relied on, and the choices of the disk are
    // made by this seed. The cut is to say Unflushed::Shuffled.
    void PutUnflushedAtRisk(std::uint32_t seed);
    // One counted operation fails with `number`, after `operations` more of them; the rest succeed.
    void FailOnce(std::size_t operations, int number);
    // After `operations` more counted operations the next `failures` fail with 3043.
    void FailFrom(std::size_t operations, std::size_t failures);
    // Power is back. With Unflushed::Lost, writes since each file's last flush (or since the cut
    // was planned) are undone first.
    void Reboot();

    // Counted operations since the object was made.
    [[nodiscard]] std::size_t Operations() const;
    [[nodiscard]] bool PowerIsOut() const;

    [[nodiscard]] std::unique_ptr<jet::io::File> Open(const std::string& path,
                                                      jet::io::OpenMode mode) override;
    [[nodiscard]] std::unique_ptr<jet::io::File> Create(const std::string& path) override;
    [[nodiscard]] bool Exists(const std::string& path) const override;
    void Remove(const std::string& path) override;
    void Rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] std::string Canonical(const std::string& path) const override;

    struct Plan;

private:
    jet::io::FileSystem& below_;
    std::shared_ptr<Plan> plan_;
};

}  // namespace tests
