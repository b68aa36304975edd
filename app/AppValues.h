// SPDX-License-Identifier: Apache-2.0
// AppValues: the application-wide values, among them what the error trap remembers.
#pragma once

#include "base/Value.h"

#include <cstdint>
#include <string>

namespace lodrin {

struct AppValues {
    std::string DataPath;          // folder of Kelvaro.mdb, without trailing separator
    double LastErrNumber = 0;      // of the last error the trap saw; callers clear it
    std::int16_t tableExists = 0;  // 1 after 3010 and 3020, 0 after 3191 and 3265; nothing reads it
    bool MissingObjectFlag = false;  // set by 3159, 3376 and 32755; nothing reads it
    base::Date selectedDate;         // result of the date selection; 0 when nobody has selected one
    std::string LogFolder;  // nothing ever assigns it: the log lies at the root of the drive
};

}  // namespace lodrin
