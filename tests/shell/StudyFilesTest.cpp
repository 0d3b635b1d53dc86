#include "shell/StudyFiles.h"

#include "tests/support/MainFormTest.h"
#include "tests/support/Testing.h"

namespace corvanta::test {
namespace {

using testing::EndsWith;

const std::string Study = "/cars/front.study";

class StudyFilesTest : public MainFormTest {
  protected:
    StudyFilesTest() { Open(SampleBytes()); }

    void Keep(const std::string& name) {
        StudyData study = m_current.Study();
        study.Variants.push_back(NewVariant(study.Variants, name, DesignOf(m_document)));
        m_current.ChangeStudy(study);
    }
    void WillChoose(const std::string& path) { m_windowSystem.Answers.push_back({path, 1}); }
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const Variant& variant : m_current.Study().Variants) {
            names.push_back(variant.Name);
        }
        return names;
    }

    StudyFiles& m_studies = m_main.Studies;
};

TEST_F(StudyFilesTest, AStudyIsSavedBesideItsDocumentAndBringsItBack) {
    EXPECT_TRUE(m_studies.MayGo());
    Keep("low");
    m_windowSystem.Answers.push_back({"/cars/front", 1});
    EXPECT_TRUE(m_studies.Save());
    EXPECT_EQ(m_windowSystem.Requests.back().InitialName, "front.study");
    EXPECT_EQ(m_main.stbMain.Note, "front.study saved");
    EXPECT_EQ(ReadStudy(*m_files.Bytes(Study), "").Document, "front.WSP");
    const StudyData saved = m_current.Study();

    Open(SampleBytes("roadster-front-links.WSP"), "/cars/rear.WSP");
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_EQ(m_studies.Path(), "");
    m_main.OpenFile(Study); // as a dropped file
    EXPECT_EQ(m_program.DocumentPath, Path);
    EXPECT_EQ(m_current.Study().Variants, saved.Variants);
    EXPECT_EQ(m_studies.Path(), Study);
    EXPECT_NE(m_main.Workbench.Opened(), nullptr) << "where all of it is in sight";

    // The document is changed and saved elsewhere: the study follows once it is saved.
    Edit("3");
    m_files.PutFolder("/cars/new");
    m_main.FileSave("/cars/new/front.WSP");
    EXPECT_TRUE(m_studies.Save());
    EXPECT_EQ(ReadStudy(*m_files.Bytes(Study), "").Document, "new/front.WSP");

    m_files.Put(Study, "by another program");
    m_box.Answers = {MessageBox::NoChoice};
    EXPECT_FALSE(m_studies.Save());
    EXPECT_EQ(m_files.Bytes(Study), "by another program");
    m_files.FailOnChange(1);
    m_box.Answers = {0};
    EXPECT_FALSE(m_studies.Save());
    EXPECT_THAT(Prompts().back(), EndsWith("No space left on device"));
    EXPECT_THAT(Names(), ElementsAre("low"));

    m_program.DocumentPath.clear();
    WillChoose("/cars/untitled.study");
    EXPECT_TRUE(m_studies.SaveAs());
    EXPECT_THAT(Prompts().back(), HasSubstr("names no document"));
}

TEST_F(StudyFilesTest, WhatCannotBeUsedChangesNothing) {
    Keep("mine");
    const StudyData before = m_current.Study();
    StudyData other;
    other.Variants = before.Variants;
    other.Variants[0].Name = "theirs";
    other.Document = "gone.WSP";
    const std::string sound = WriteStudy(other);
    m_files.Put(Study, sound.substr(0, sound.size() / 2));
    m_studies.Open(Study);
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("front.study")));
    m_studies.Open("/cars/none.study");
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("File not found")));

    m_files.Put(Study, sound);
    m_studies.Open(Study); // neither way is taken
    EXPECT_THAT(m_box.Ways, ElementsAre("&Choose Document...", "&Use Open Document"));
    m_box.Answers = {1};
    m_studies.Open(Study); // what would be lost stays
    EXPECT_EQ(m_current.Study(), before);
    EXPECT_THAT(Prompts().back(), HasSubstr("Save the study?"));

    m_box.Answers = {1, maNo};
    m_studies.Open(Study);
    EXPECT_THAT(Names(), ElementsAre("theirs"));
    EXPECT_EQ(m_current.Study().Baseline, before.Baseline);

    m_files.Put("/race/moved.WSP", SampleBytes("roadster-front-links.WSP"));
    WillChoose("/race/moved.WSP");
    m_box.Answers = {0};
    m_studies.Open(Study);
    EXPECT_EQ(m_program.DocumentPath, "/race/moved.WSP");
    EXPECT_THAT(Names(), ElementsAre("theirs"));
}

TEST_F(StudyFilesTest, VariantsThatNoFileHasAreAskedAboutBeforeTheyGo) {
    Keep("low");
    m_files.Put("/cars/rear.WSP", SampleBytes());
    m_main.OpenFile("/cars/rear.WSP");
    m_main.Execute(mcNew, 0); // backs out of discarding the document
    EXPECT_EQ(m_program.DocumentPath, Path);
    m_main.FileOpen(Path); // read again
    EXPECT_THAT(Names(), ElementsAre("low"));
    m_box.Shown.clear();
    Edit("3");
    m_box.Answers = {maNo}; // to the changes, and backs out of the study
    EXPECT_FALSE(m_main.QueryUnload());
    EXPECT_THAT(Prompts(), ElementsAre("Save changes?", HasSubstr("Save the study?")));
    EXPECT_TRUE(m_files.FileExists("/recovery/1.WSP")) << "nothing is given up yet";

    m_box.Answers = {maYes, maYes};
    WillChoose(Study);
    EXPECT_TRUE(m_main.QueryUnload());
    EXPECT_TRUE(m_files.FileExists(Study));
    StudyData study = m_current.Study();
    study.Variants.clear(); // deleting asks for nothing
    m_current.ChangeStudy(study);
    m_box.Shown.clear();
    EXPECT_TRUE(m_main.QueryUnload());
    EXPECT_THAT(Prompts(), IsEmpty());

    study.Questions.Optimise.Free = {{PointCoordinate{ptTRI, 2}, 90, 110}};
    m_current.ChangeStudy(study);
    m_box.Answers = {MessageBox::NoChoice};
    EXPECT_FALSE(m_main.QueryUnload());
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("questions that are in no study file")));
    EXPECT_TRUE(m_studies.Save());
    EXPECT_TRUE(m_main.QueryUnload());
    EXPECT_EQ(ReadStudy(*m_files.Bytes(Study), "").Questions, study.Questions);
}

TEST_F(StudyFilesTest, VariantsComeFromDocumentsAndGoToThem) {
    const std::string bad = "/cars/bad.WSP";
    m_files.Put("/cars/a.WSP", Changed("ptWTCP", "[ptWTCP]\t7\t600\t0\t"));
    m_files.Put("/race/a.WSP", Changed("ptWTCP", ""));
    m_files.Put(bad, "no document");
    m_windowSystem.Answers.push_back({"/cars/a.WSP", 1, {"/cars/a.WSP", bad, "/race/a.WSP"}});
    m_studies.AskAndAddVariants();
    EXPECT_TRUE(m_windowSystem.Requests.back().Several);
    EXPECT_THAT(Names(), ElementsAre("a", "a (2)"));
    EXPECT_EQ(m_current.Study().Variants[0].Design.Points[ptWTCP].X, 7);
    EXPECT_THAT(Prompts(), ElementsAre(AllOf(HasSubstr("not be added:\r\rbad.WSP: "),
                                             HasSubstr("look at them:\r\ra.WSP: "))));

    WillChoose(Path);
    m_studies.SaveVariant(0); // not over the open document unasked
    EXPECT_THAT(Prompts(), ElementsAre(HasSubstr("is the open document")));
    EXPECT_EQ(m_files.Bytes(Path), SampleBytes());
    WillChoose("/cars/low");
    m_studies.SaveVariant(0);
    const Design design = m_current.Study().Variants[0].Design;
    Open(*m_files.Bytes("/cars/low.WSP"), "/cars/low.WSP");
    EXPECT_EQ(m_program.DocumentPath, Path) << "the variants stay until the user says so";
    m_box.Answers = {maNo};
    m_main.FileOpen("/cars/low.WSP");
    EXPECT_EQ(DesignOf(m_document), design);
}

} // namespace
} // namespace corvanta::test
