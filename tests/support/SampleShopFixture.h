// SPDX-License-Identifier: Apache-2.0
// SampleShopFixture: the program without its windows, over a copy of a real shop.
#pragma once

#include "app/Dispatch.h"
#include "app/frmLodrin.h"
#include "jet/io/StdFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopWorld.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>

namespace tests {

class SampleShopFixture : public ::testing::Test {
protected:
    ScratchFolder folder;
    std::filesystem::path sample, file;
    std::unique_ptr<ShopWorld> world;

    // Copies the shop. Rule: skips the test when the sample or the independent reader is absent.
    void TakeShop(const std::string& name)
    {
        sample = SampleFolder() / name / "Kelvaro.mdb";
        SKIP_WITHOUT_SAMPLE(sample);
        if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
        file = folder.Copy(sample);
    }

    // Starts the program over the copy; these boxes come while its main window loads.
    void StartProgram(base::Date now, std::initializer_list<const char*> boxes)
    {
        world = std::make_unique<ShopWorld>(folder.Path());
        world->fakes.clock.Set(now);
        world->fakes.files.Write("C:/Lodrin/Lodrin.ini",
                                 "[FileLoc]\r\nLodrin=" + folder.Path().string() + "\r\n");
        world->fakes.files.Write(file.string(), "");
        for (const char* box : boxes)
            world->fakes.prompts.Expect(box);
        lodrin::Dispatch(world->shop, lodrin::Form_Load);
        lodrin::Dispatch(world->shop, lodrin::Form_Activate);
    }

    // Nothing was asked that was not laid down, and all that was; the file is sound.
    void ExpectTalkIsOver()
    {
        jet::io::StdFileSystem files;
        EXPECT_CLEAN(files, file.string());
        EXPECT_EQ(world->fakes.prompts.Pending(), std::vector<std::string>{});
        EXPECT_EQ(world->dialogs.Pending(), 0U);
    }
};

}  // namespace tests
