// SPDX-License-Identifier: Apache-2.0
#include "platform/Desktop.h"

namespace platform {

void Program::End()
{
    throw ProgramEnded{};
}

}  // namespace platform
