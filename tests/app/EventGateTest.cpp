// SPDX-License-Identifier: Apache-2.0
#include "app/EventGate.h"

#include <gtest/gtest.h>

using lodrin::EventGate;
using Modal = EventGate::Modal;

TEST(EventGateTest, TheMainWindowMayRunWhenNothingElseDoes)
{
    const EventGate gate;
    EXPECT_TRUE(gate.MainMayRun());
    EXPECT_FALSE(gate.DialogMayRun());
}

TEST(EventGateTest, OneProcedureKeepsAnotherOut)
{
    EventGate gate;
    {
        const EventGate::Procedure running(gate);
        EXPECT_FALSE(gate.MainMayRun());
    }
    EXPECT_TRUE(gate.MainMayRun());
}

TEST(EventGateTest, ABoxTakesNoEventsAtAll)
{
    EventGate gate;
    const EventGate::Window box(gate, Modal::Box);
    EXPECT_FALSE(gate.MainMayRun());
    EXPECT_FALSE(gate.DialogMayRun());
}

TEST(EventGateTest, ADialogTakesItsOwnEventsOneAtATime)
{
    EventGate gate;
    const EventGate::Window dialog(gate, Modal::Dialog);
    EXPECT_FALSE(gate.MainMayRun());
    EXPECT_TRUE(gate.DialogMayRun());
    const EventGate::Procedure running(gate);
    EXPECT_FALSE(gate.DialogMayRun());
}

TEST(EventGateTest, ABoxOverADialogHoldsTheDialogsEventsToo)
{
    EventGate gate;
    const EventGate::Window dialog(gate, Modal::Dialog);
    {
        const EventGate::Window box(gate, Modal::Box);
        EXPECT_FALSE(gate.DialogMayRun());
    }
    EXPECT_TRUE(gate.DialogMayRun());
}

TEST(EventGateTest, TheProcedureThatOpenedADialogStillHoldsTheMainWindowAfterwards)
{
    EventGate gate;
    const EventGate::Procedure running(gate);
    {
        const EventGate::Window dialog(gate, Modal::Dialog);
        EXPECT_TRUE(gate.DialogMayRun());
    }
    EXPECT_FALSE(gate.MainMayRun());
}
