#include "shell/ExportCommands.h"

#include "tests/support/FakeShellHost.h"
#include "tests/support/TestDesk.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

using testing::Not;
using testing::SizeIs;

const std::string Component = "/out/front.svr";
const std::string Drawing = "/out/front.dxf";

class ExportCommandsTest : public testing::Test, protected TestDesk {
  protected:
    ExportCommandsTest() {
        m_program.Document = DoubleWishboneCorner();
        CalculateCorner(m_program.Document);
        m_program.Settings = {vwAntis, 0, vvAlongWheelTravel, 3, 2};
        m_program.Options.ExportFilePath = "/cars/";
        m_files.PutFolder("/out");
    }

    std::string Bytes(const std::string& path) { return m_files.Bytes(path).value_or("no file"); }

    /// What both commands leave as it was.
    void ExpectNothingRemembered() const {
        EXPECT_EQ(m_program.Options.ExportFilePath, "/cars/");
        EXPECT_EQ(m_program.Options.ExportType, 1);
        EXPECT_EQ(m_program.Settings.View, vwAntis);
        EXPECT_THAT(m_main.Calls, IsEmpty()) << "the view is not touched";
    }

    FakeShellHost m_main;
};

TEST_F(ExportCommandsTest, TheKindOfFileChoosesTheVersionOfTheComponent) {
    for (const auto& [filter, version] :
         {std::pair(1, "SUSPVAR 2.2"), std::pair(2, "SUSPVAR 1.1")}) {
        m_main.Asked.clear();
        m_main.Names = {{Component, "front.svr", "svr", filter}};
        AskAndExportComponent(m_desk, m_main);
        EXPECT_THAT(m_main.Asked,
                    ElementsAre(AskedName{FileNameMode::SaveAs,
                                          "Sorvent SuspVariable SUSPVAR 2.2 files (*.svr)|*.svr|"
                                          "Sorvent SuspVariable SUSPVAR 1.1 files (*.svr)|*.svr",
                                          "/cars/", "", "svr", false}));
        EXPECT_THAT(Bytes(Component), HasSubstr(version));
        EXPECT_EQ(m_main.Confirmed, "front.svr written");
    }
    ExpectNothingRemembered();
    EXPECT_THAT(m_box.Prompts(), IsEmpty());
}

TEST_F(ExportCommandsTest, TheDrawingIsThatOfTheCurrentPosition) {
    m_main.Names = {{Drawing, "front.dxf", "dxf", 1}};
    AskAndExportDXF(m_desk, m_main);
    EXPECT_THAT(m_main.Asked, ElementsAre(AskedName{FileNameMode::SaveAs, "*.dxf|*.dxf", "/cars/",
                                                    "", "dxf", false}));
    EXPECT_THAT(Bytes(Drawing), StartsWith(" 0 \r\nSECTION\r\n"));
    EXPECT_THAT(Bytes(Drawing), EndsWith(" 0 \r\nEOF\r\n"));
    // Rack step 2 and wheel step 3, neither of them static: the height of the wheel centre there.
    const auto height = [&](int rack, int wheel) {
        return " " + NumberToText(m_program.Document.WheelStates(rack, wheel).Points[ptWC].Z, {})
                         .substr(0, 9);
    };
    EXPECT_THAT(Bytes(Drawing), HasSubstr(height(2, 3)));
    EXPECT_THAT(Bytes(Drawing), Not(HasSubstr(height(3, 2))));
    EXPECT_EQ(m_main.Confirmed, "front.dxf written");
    m_main.Confirmed.clear();
    const std::string document = "/out/front.WSP"; // which no export replaces
    m_files.Put(document, "a corner");
    m_program.DocumentPath = document;
    const std::size_t changes = m_files.Changes().size();
    for (const bool named : {false, true}) {
        m_main.Names.assign(named ? 3 : 0, {document, "front.WSP", "WSP", 1});
        AskAndExportComponent(m_desk, m_main); // cancelled when not named
        AskAndExportDXF(m_desk, m_main);
        AskAndExportResults(m_desk, m_main, 1);
        EXPECT_THAT(m_box.Prompts(), SizeIs(named ? 3 : 0));
    }
    EXPECT_EQ(m_main.Asked.size(), 7U);
    EXPECT_EQ(m_main.Confirmed, "");
    EXPECT_EQ(m_files.Changes().size(), changes);
    ExpectNothingRemembered();
}

} // namespace
} // namespace corvanta::test
