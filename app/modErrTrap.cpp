// SPDX-License-Identifier: Apache-2.0
#include "app/modErrTrap.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "base/Format.h"
#include "base/Text.h"

#include <string>

namespace lodrin {

namespace {

constexpr const char* kLineBreak = "\r\n";

// The three actions run on in one paragraph.
constexpr const char* kDuplicateProgram =
    "The Kelvaro Lodrin program is already running on this machine.\r\n"
    " Try the following actions as necessary: \r\n\r\n"
    "1. Check your task bar, if Lodrin is shown click on the button to activate it. "
    "2. Try starting the Lodrin program again.  "
    "3. If actions 1 and 2 above do not work and this message appears again, press "
    "Control/Alt/Delete.  This will bring up the Task Manager.  If the Lodrin Software appears in "
    "the task list, highlight it and click on 'End Task'.  If a second box appears press 'End "
    "Task' there as well.  Then retry running Lodrin.";
constexpr const char* kDuplicateTitle = "Duplicate Program";
constexpr const char* kIsThisTheDate = "Is this the correct date: ";
constexpr const char* kDateTitle = "Date Verification";

constexpr const char* kSeriousTitle = "Application Error";
constexpr const char* kCopied = "This message has been copied to your clipboard for easy retreval.";
constexpr const char* kContinue = "Select 'OK' and the program will attempt to continue running.";

enum class Trouble { Serious, Locked, TableExists, NoTableExists, MissingObject, Silent, Ordinary };

Trouble TroubleOf(int number)
{
    switch (number) {
    case 7:
    case 11:
    case 61:
    case 70:
    case 76:
    case 31001:
    case 31036:
    case 31037:
        return Trouble::Serious;
    case 3046:
    case 3158:
    case 3186:
    case 3187:
    case 3188:
    case 3189:
    case 3218:
    case 3260:
    case 3262:
        return Trouble::Locked;
    case 3010:
    case 3020:
        return Trouble::TableExists;
    case 3191:
    case 3265:
        return Trouble::NoTableExists;
    case 3159:
    case 3376:
    case 32755:
        return Trouble::MissingObject;
    case 3420:
        return Trouble::Silent;
    default:
        return Trouble::Ordinary;
    }
}

// One failure, as the trap was told of it.
struct Failure {
    std::string_view location;
    int number;
    std::string_view description;
};

std::string ProgramAndVersion(platform::Program& program)
{
    const platform::Version version = program.VersionNumbers();
    return program.ExecutableName() + ".exe v" + base::Format(version.major, "#") + "." +
           base::Format(version.minor, "0#") + " (Build " + base::Format(version.revision, "#0") +
           ")";
}

// There are no numbered lines, so the line is 0.
std::string Report(platform::Program& program, const Failure& failure)
{
    return "Error " + std::to_string(failure.number) + " in " + std::string(failure.location) +
           " (Line = 0)" + kLineBreak + "while running " + ProgramAndVersion(program) + kLineBreak +
           kLineBreak + "Error = '" + std::string(failure.description) + "'";
}

// Shown and put on the clipboard, so that it can be sent on.
void ShowSerious(Shop& shop, const Failure& failure)
{
    platform::Services& services = shop.platform;
    const std::string report = Report(services.program, failure);
    services.clipboard.Clear();
    services.clipboard.SetText(report);
    const std::string text = report + kLineBreak + kLineBreak + kCopied + kLineBreak + kLineBreak +
                             kLineBreak + kContinue;
    const platform::Box box{.text = text, .title = kSeriousTitle, .icon = platform::Icon::Critical};
    // The box has no Cancel; should it ever get one, it ends the program.
    if (Ask(shop, box) == platform::Answer::Cancel) services.program.End();
    services.pointer.Default();
}

// Date and time run on without a blank, in the box as in the log.
std::string When(const platform::Services& services)
{
    const base::Date now = services.clock.Now();
    return services.formats.ShortDate(now) + ":" + services.formats.Time(now);
}

// The quote closes what none opened; the machine and the user are named in the description.
void ShowLocked(Shop& shop, const Failure& failure)
{
    Say(shop, std::string(failure.description) + "'" + When(shop.platform));
}

void Log(Shop& shop, const Failure& failure)
{
    const std::string line = "Error " + std::to_string(failure.number) + " in " +
                             std::string(failure.location) + "Error = '" +
                             std::string(failure.description) + "'" + When(shop.platform);
    const std::string path = shop.values.LogFolder + "\\Lodrin.Log";
    const std::string record = "\"" + base::ToWindows1252(line) + "\"" + kLineBreak;
    shop.platform.files.Append(shop.platform.paths.ToHost(path), record);
    shop.platform.pointer.Default();
}

}  // namespace

void Main(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub modErrTrap!General_Main()");
    const platform::Services& services = shop.platform;

    // One copy on a machine. Where that cannot be found out, this one counts as the first: a shop
    // that cannot clock in is worse off than one with two windows.
    if (attempt.Test([&] { return services.instance.AnotherRuns(); }, IfItFails::SkipBranch)) {
        attempt([&] { Say(shop, kDuplicateProgram, kDuplicateTitle); });
        services.program.End();
    }

    // Every hour is stamped with this machine's clock, so its date has to be right.
    std::string question = kIsThisTheDate;
    attempt([&] { question += services.formats.LongDate(services.clock.Now()); });
    const platform::Box box{
        .text = question, .title = kDateTitle, .buttons = platform::Buttons::YesNo};
    if (attempt.Test([&] { return Ask(shop, box) == platform::Answer::No; }, IfItFails::TakeBranch))
        services.program.End();

    // The splash, and behind it the main window.
    attempt([&] { shop.dialogs.ShowSplash(shop); });
    attempt([&] { DoEvents(shop); });
    attempt([&] { shop.dialogs.ShowMain(shop); });
    attempt([&] { DoEvents(shop); });
}

void ErrTrap(Shop& shop, std::string_view location, int number, std::string_view description)
{
    const Failure failure{location, number, description};
    AppValues& values = shop.values;
    switch (TroubleOf(number)) {
    case Trouble::Serious:
        ShowSerious(shop, failure);
        break;
    case Trouble::Locked:
        ShowLocked(shop, failure);
        break;
    case Trouble::TableExists:
        values.tableExists = 1;
        break;
    case Trouble::NoTableExists:
        values.tableExists = 0;
        break;
    case Trouble::MissingObject:
        values.MissingObjectFlag = true;
        break;
    case Trouble::Silent:
        break;
    case Trouble::Ordinary:
        Log(shop, failure);
        break;
    }
    values.LastErrNumber = number;
}

bool IsTold(int number)
{
    const Trouble trouble = TroubleOf(number);
    return trouble == Trouble::Serious || trouble == Trouble::Locked;
}

}  // namespace lodrin
