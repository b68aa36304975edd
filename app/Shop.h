// SPDX-License-Identifier: Apache-2.0
// Shop: everything a procedure may touch, as one value that is passed and has no behaviour.
#pragma once

#include "app/AppValues.h"
#include "app/Dialogs.h"
#include "app/EventGate.h"
#include "app/MainWindowState.h"
#include "app/frmLodrin.h"
#include "app/frmSplash.h"
#include "data/frmProcMsg.h"
#include "floor/frmGLSelect.h"
#include "floor/frmProgress.h"
#include "jet/dao/DBEngine.h"
#include "platform/Services.h"
#include "setup/frmDateSel.h"
#include "setup/frmPreview.h"
#include "setup/frmStatus.h"

#include <memory>

namespace lodrin {

// The dialogs; their public values live as long as the program.
struct Forms {
    frmSplash splash;
    frmProcMsg procMsg;
    frmGLSelect glSelect;
    frmProgress progress;
    frmDateSel dateSel;
    frmPreview preview;
    std::unique_ptr<frmStatus> status;  // made when it is first asked for
};

struct Shop {
    Shop(Dialogs& shownBy, platform::Services& services, dao::DBEngine& databases)
        : dialogs(shownBy), platform(services), engine(databases)
    {
    }

    AppValues values;
    MainWindowState state;
    frmLodrin window;
    Forms forms;
    Dialogs& dialogs;
    platform::Services& platform;
    dao::DBEngine& engine;
    EventGate gate;
};

}  // namespace lodrin
