// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtInstance.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::qt {

namespace {

constexpr const char* kLockFolder = "/run/lock";
constexpr const char* kLockName = "/KelvaroLodrin.lock";

// Opened for reading first: in a sticky folder the kernel refuses to "create" the file of another
// user, but lets everybody read and lock it.
int OpenLockFile(const std::string& path)
{
    constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW;
    int descriptor = ::open(path.c_str(), kFlags);
    if (descriptor < 0 && errno == ENOENT)
        descriptor = ::open(path.c_str(), kFlags | O_CREAT | O_EXCL, 0644);
    // Another copy made it between the two attempts.
    if (descriptor < 0 && errno == EEXIST) descriptor = ::open(path.c_str(), kFlags);
    return descriptor;
}

}  // namespace

std::string QtInstance::MachineLockFile()
{
    const bool usable = ::access(kLockFolder, W_OK | X_OK) == 0;
    return std::string(usable ? kLockFolder : "/tmp") + kLockName;
}

QtInstance::~QtInstance()
{
    if (descriptor_ >= 0) ::close(descriptor_);
}

bool QtInstance::AnotherRuns()
{
    if (descriptor_ >= 0) return false;
    const int descriptor = OpenLockFile(lockFile_);
    if (descriptor < 0) return false;
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        descriptor_ = descriptor;
        return false;
    }
    const bool held = errno == EWOULDBLOCK;
    ::close(descriptor);
    return held;
}

}  // namespace platform::qt
