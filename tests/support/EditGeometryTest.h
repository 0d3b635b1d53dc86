#pragma once

#include "persistence/MData.h"
#include "shell/frmEditGeometry.h"
#include "tests/support/FakeShellHost.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/TestDesk.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvanta::test {

/// A geometry editor that is open on a sample, with the hands of a user.
class EditGeometryTest : public testing::Test, protected TestDesk {
  protected:
    EditGeometryTest() { Open("formula-front-pushrod.WSP"); }

    void UseUnits(const char* displacement, const char* force, const char* mass, const char* rate) {
        m_program.Units = UnitsOf(displacement, force, mass, rate);
        m_program.Channels.ChannelsSetup(m_program.Units);
    }

    /// A new editor on the document as it is.
    frmEditGeometry& Reopen() {
        m_form = std::make_unique<frmEditGeometry>(m_desk, m_main);
        m_form->Open();
        return *m_form;
    }
    frmEditGeometry& Open(const std::string& sample) {
        m_document = LoadSample(sample);
        m_document.ResultsValid = true;
        m_current.Begin("Open", true);
        m_main.Calls.clear();
        return Reopen();
    }

    void ChooseMechanism(int mechanism) {
        m_form->cboSpringMechanism.Select(mechanism);
        m_form->cboSpringMechanism_Changed();
    }
    void ChooseSprings(int springs) {
        m_form->cboSpringSystem.Select(springs);
        m_form->cboSpringSystem_Changed();
    }
    void ChooseBar(int value) {
        m_form->cboARB.Select(m_form->cboARB.FindData(value));
        m_form->cboARB_Changed();
    }

    void Type(NumberBox& box, const std::string& text) {
        box.Text = text;
        m_form->NumberBox_Changed(box);
    }

    [[nodiscard]] int RowOf(PointNumber number) const {
        int row = 0;
        while (row < m_form->grdPoints.Rows() && m_form->PointAtRow(row) != number) {
            ++row;
        }
        return row;
    }
    void TypeX(PointNumber number, const std::string& text) {
        m_form->grdPoints_Edited(RowOf(number), 1, text);
    }
    [[nodiscard]] std::string CellX(PointNumber number) const {
        return m_form->grdPoints.Cell(RowOf(number), 1);
    }

    /// The document as a file.
    std::string Saved() {
        bool written = false;
        DataWrite(written, m_document, "/saved.WSP", m_program.Units, m_files, m_messages);
        EXPECT_TRUE(written);
        return m_files.Bytes("/saved.WSP").value_or("");
    }

    Suspension& m_document = m_program.Document;
    SuspensionData& m_data = m_document.Data;
    FakeShellHost m_main;
    std::unique_ptr<frmEditGeometry> m_form;
};

} // namespace corvanta::test
