#pragma once

#include "platform/DiskFileServices.h"
#include "shell/frmMain.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TestDesk.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta::test {

/// A main window whose surroundings are all in memory, with the hands of a user.
class MainFormTest : public testing::Test, protected TestDesk {
  protected:
    inline static const std::string Path = "/cars/front.WSP";

    MainFormTest() {
        m_main.Load();
        m_main.BuildToolbar();
        m_main.Files.Recovery.SetFolder("/recovery/");
        m_main.RefreshGUI(false);
    }

    static std::string SampleBytes(const std::string& name = "touring-front-wishbone.WSP") {
        return DiskFileServices().ReadBytes(SamplePath(name));
    }

    /// The sample with another line for a field, or with none.
    static std::string Changed(const std::string& key, const std::string& line) {
        std::string bytes = SampleBytes();
        const std::size_t open = bytes.find("[" + key + "]");
        bytes.replace(open, bytes.find("\r\n", open) + 2 - open, line.empty() ? "" : line + "\r\n");
        return bytes;
    }

    /// Opens the bytes as a file and returns the messages of that.
    std::vector<std::string> Open(const std::string& bytes, const std::string& path = Path) {
        m_files.Put(path, bytes);
        m_box.Shown.clear();
        m_main.FileOpen(path);
        return m_box.Prompts();
    }

    /// Opens a sample and stands two steps of wheel travel above static and a step of the rack
    /// beside it.
    void OpenOffStatic(const std::string& sample) {
        Open(SampleBytes(sample));
        m_settings.ViewWheel = m_document.StaticWheel - 2;
        m_settings.ViewRack = m_document.StaticRack + 1;
    }

    /// Shows a view and returns what the window's grid holds then.
    std::string Show(std::int32_t view, std::int32_t argument = 0) {
        m_settings.View = view;
        m_main.RefreshGUI(false);
        m_settings.ViewArgument = argument;
        m_main.RefreshGUI(false);
        return m_main.Grid().Text();
    }

    /// Opens the editor and types the X of the contact patch into it.
    void TypeInEditor(const std::string& x) {
        m_main.Execute(mcProperties, 0);
        frmEditGeometry& editor = *m_main.EditGeometry;
        int row = 0;
        while (editor.PointAtRow(row) != ptWTCP) {
            ++row;
        }
        editor.grdPoints_Edited(row, 1, x);
    }

    /// Changes the document as the user does.
    void Edit(const std::string& x) {
        TypeInEditor(x);
        m_main.EditGeometry->cmdOK_Click();
    }

    Suspension& m_document = m_program.Document;
    ViewSettings& m_settings = m_program.Settings;
    frmMain m_main{m_desk};
};

} // namespace corvanta::test
