#pragma once

// A program whose sessions are written to files and read back.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/program_fixture.h"
#include "core/workspace_lines.h"
#include "orbit/element_sets.h"
#include "orbit/files.h"

namespace glintara::testing {

struct WorkspaceTest : ProgramTest {
    WorkspaceTest() {
        program.Start({});
        RunAtOnce();
        main.Timer1.Stop();
    }

    std::filesystem::path File(const std::string& name = "night.cst") const { return folder.Path() / name; }

    /// Writes a file and loads it as the user does.
    bool Load(const std::string& text, bool verbose = true) {
        EXPECT_TRUE(ReplaceFile(File("given.cst"), text));
        return program.Files.LoadWorkspaceCommand(File("given.cst"), verbose);
    }

    bool Load(const WorkspaceLines& lines, bool verbose = true) { return Load(lines.Text(), verbose); }

    void AddIridiums() {
        ASSERT_TRUE(LoadTLEFile(app, GLINTARA_SOURCE_DIR "/data/examples/iridium.tle"));
        CApplyTLEOrbit_click(app);
        ASSERT_EQ(data.SatCount, 86);
    }

    std::string Told() const { return boxes.messages.empty() ? "" : boxes.messages.back().text; }
    const std::string& Said() const { return main.LCommandOutput.Caption; }

    CommonData& data = app.Data;
    MainControls& main = app.Main;
    ViewState& view = app.Data.View;
};

}  // namespace glintara::testing
