// SPDX-License-Identifier: Apache-2.0
// check_mdb: tells whether a database file is sound, and where it is not.
#include "base/NumberedError.h"
#include "jet/check/IntegrityChecker.h"
#include "jet/io/StdFile.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

enum ExitCode { kClean = 0, kDefects = 1, kCannotCheck = 2 };

constexpr const char* kUsage = "usage: check_mdb [--quiet] [--password P] FILE\n"
                               "       check_mdb --help\n";

constexpr const char* kHelp =
    "Reads a Jet database (.mdb) and checks every page, map, row, long value,\n"
    "index entry and catalog row against each other. Writes nothing.\n"
    "\n"
    "Each finding is one line: its kind, page, offset in the page, and what is\n"
    "wrong. A line that begins with \"remark\" tells of something that sound files\n"
    "show too, such as a page that a crash left unused.\n"
    "\n"
    "  --quiet       no summary and no remarks\n"
    "  --password P  of a file that has one\n"
    "\n"
    "exit status: 0 no damage, 1 damage found, 2 the file cannot be checked\n";

struct Wish {
    std::string file, password;
    bool quiet = false;
    bool help = false;
};

// False when the words make no sense.
bool ReadWish(int count, char** words, Wish& wish)
{
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        if (word == "--help" || word == "-h") {
            wish.help = true;
        } else if (word == "--quiet") {
            wish.quiet = true;
        } else if (word == "--password" && i + 1 < count) {
            wish.password = words[++i];
        } else if (word.substr(0, 1) == "-" || !wish.file.empty()) {
            return false;
        } else {
            wish.file = word;
        }
    }
    return wish.help || !wish.file.empty();
}

// The check goes here and there in the file; a disk reads it from front to back several times as
// fast, and afterwards the system has it in memory. What cannot be read the check will tell.
void ReadThrough(const std::string& path)
{
    constexpr std::size_t atOnce = std::size_t{1} << 20;
    constexpr int most = 2048;  // the format's 2 GB
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes(atOnce);
    for (int read = 0; read < most && file.read(bytes.data(), atOnce); ++read) {
    }
}

void ShowProgress(std::uint32_t done, std::uint32_t of)
{
    std::fprintf(stderr, "\r%u of %u tables", done, of);
    std::fflush(stderr);
}

void Print(const jet::check::CheckReport& report, bool quiet)
{
    for (const jet::check::Defect& defect : report.defects) {
        const bool remark = jet::check::SeverityOf(defect.kind) == jet::check::Severity::Remark;
        if (remark && quiet) continue;
        std::printf("%s%s %u %zu %s\n", remark ? "remark " : "",
                    std::string(jet::check::NameOf(defect.kind)).c_str(), Raw(defect.page),
                    defect.offset, defect.text.c_str());
    }
    if (report.notListed != 0)
        std::printf("and %llu more\n", static_cast<unsigned long long>(report.notListed));
    if (quiet) return;
    std::printf("%s: %u pages, %u tables, %llu rows, %llu index entries, %llu long values\n",
                report.Clean() ? "clean" : "damaged", report.pages, report.tables,
                static_cast<unsigned long long>(report.rows),
                static_cast<unsigned long long>(report.indexEntries),
                static_cast<unsigned long long>(report.longValues));
}

int Check(const Wish& wish)
{
    jet::io::StdFileSystem files;
    const bool terminal = ::isatty(STDERR_FILENO) != 0;
    ReadThrough(wish.file);
    const jet::check::CheckReport report = jet::check::CheckIntegrity(
        files, wish.file, terminal ? jet::check::Progress(ShowProgress) : jet::check::Progress(),
        wish.password);
    if (terminal) std::fputs("\r\033[K", stderr);
    Print(report, wish.quiet);
    return report.Clean() ? kClean : kDefects;
}

}  // namespace

int main(int count, char** words)
{
    Wish wish;
    if (!ReadWish(count, words, wish)) {
        std::fputs(kUsage, stderr);
        return kCannotCheck;
    }
    if (wish.help) {
        std::printf("%s\n%s", kUsage, kHelp);
        return kClean;
    }
    try {
        return Check(wish);
    } catch (const base::NumberedError& error) {
        std::fprintf(stderr, "check_mdb: %s: %s%s%s%s\n", wish.file.c_str(), error.what(),
                     error.Detail().empty() ? "" : " (", error.Detail().c_str(),
                     error.Detail().empty() ? "" : ")");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "check_mdb: %s: %s\n", wish.file.c_str(), error.what());
    }
    return kCannotCheck;
}
