// The data file: its name, opening and saving, OK and "Abbruch".

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/textctrl.h>

#include <filesystem>

#include "plugin/editor/EditorDialog.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/plugin/editor/FileDialogUser.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using widget_test::Click;
using widget_test::Press;
using widget_test::Type;

class EditorFiles : public EditorTest {
 protected:
  std::string DataFileText() const { return form.KXEdit_Datafile.GetText(); }

  static TShortTestData Wired(int a, int b, int last) {
    TShortTestData data(1, last);
    data.Put(a - 1, b - 1, CellState::Connected, 0.4);
    return data;
  }
};

TEST_F(EditorFiles, NameIsTheValueOfTheExpression) {
  form.KXEdit_Datafile.SetText("PROJEKTPFAD + \"kabel.dat\"");
  EXPECT_EQ(form.GetDataFileName(), ProjectFile("kabel.dat"));
}

TEST_F(EditorFiles, NameIsTheTextThatIsNoExpression) {
  form.KXEdit_Datafile.SetText("/tmp/kabel.dat");
  EXPECT_EQ(form.GetDataFileName(), "/tmp/kabel.dat");
}

TEST_F(EditorFiles, NameIsTheTextWithoutAParser) {
  form.SetParser(nullptr);
  form.KXEdit_Datafile.SetText("\"a\"");
  EXPECT_EQ(form.GetDataFileName(), "\"a\"");
}

TEST_F(EditorFiles, OkWithAFileNameWritesTheFile) {
  const std::string file = UseExpectation(TShortTestData(1, 4));
  const int result = Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 4");
    Click(*form.BT_OK);
  });
  EXPECT_EQ(result, mrOk);
  EXPECT_EQ(TShortTestData(file).Get(0, 3), CellState::Connected);
  EXPECT_EQ(form.Data(), nullptr);
}

TEST_F(EditorFiles, OkWithoutAFileNameSavesNothingAndSaysNothing) {
  const int result = Show([this] { Click(*form.BT_OK); });
  EXPECT_EQ(result, mrOk);
  EXPECT_EQ(form.Data(), nullptr);
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(EditorFiles, CancelWritesNothing) {
  const std::string file = UseExpectation(TShortTestData(1, 4));
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 4");
    Enter(*form.Ed_Timeout);
    Click(*form.ButtonCancel);
  });
  EXPECT_EQ(TShortTestData(file).Get(0, 3), CellState::Unknown);
}

TEST_F(EditorFiles, CancelWithAWrongTextSaysNothing) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 490");
    Press(WXK_ESCAPE);
  });
  EXPECT_EQ(form.ModalResult(), mrCancel);
}

TEST_F(EditorFiles, EditsOfACancelledShowingAreLost) {
  UseExpectation(Wired(1, 2, 4));
  Show([this] {
    Replace(*form.Mm_Soll, "3 4");
    Click(*form.ButtonCancel);
  });
  Show([this] { EXPECT_EQ(TextOf(form.Mm_Soll), "1 2"); });
}

TEST_F(EditorFiles, FailedSaveOnOkIsReportedAndTheDialogStays) {
  const std::string file = ProjectFile("fehlt/kabel.dat");
  const int result = Show([&] {
    form.KXEdit_Datafile.SetText("\"" + file + "\"");
    Click(*form.BT_OK);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("kabel.dat")));
    EXPECT_EQ(form.ModalResult(), mrNone);
    EXPECT_NE(form.Data(), nullptr);
    EXPECT_EQ(ActiveShortTestForm, &form);
    form.KXEdit_Datafile.SetText("PROJEKTPFAD + \"kabel.dat\"");
    Click(*form.BT_OK);
  });
  EXPECT_EQ(result, mrOk);
  EXPECT_TRUE(std::filesystem::exists(ProjectFile("kabel.dat")));
}

TEST_F(EditorFiles, OpenLoadsTheFileAndNamesItRelativeToTheProject) {
  const std::string file = UseExpectation(Wired(2, 7, 9));
  form.KXEdit_Datafile.SetText("");
  FileDialogUser user({file});
  Show([&] {
    Click(*form.BT_Fileopen);
    EXPECT_EQ(DataFileText(), "PROJEKTPFAD + \"kabel.dat\"");
    EXPECT_EQ(TextOf(form.Mm_Soll), "2 7");
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "9");
    EXPECT_EQ(Data().bis, 9);
  });
  EXPECT_EQ(user.dialogs, 1);
}

TEST_F(EditorFiles, OpenStartsInTheProjectFolderWithoutAFilter) {
  FileDialogUser user({});
  Show([&] { Click(*form.BT_Fileopen); });
  EXPECT_EQ(std::filesystem::path(user.directory + "/").lexically_normal(),
            std::filesystem::path(ProjectFile("")).lexically_normal());
  // The toolkit may put a description in front.
  EXPECT_THAT(user.wildcard, testing::EndsWith(wxString(wxFileSelectorDefaultWildcardStr).utf8_string()));
  EXPECT_EQ(user.style & (wxFD_OPEN | wxFD_CHANGE_DIR | wxFD_MULTIPLE), wxFD_OPEN);
}

TEST_F(EditorFiles, OpenCancelledChangesNothing) {
  UseExpectation(Wired(1, 2, 4));
  FileDialogUser user({});
  const std::string before = DataFileText();
  Show([&] {
    Click(*form.BT_Fileopen);
    EXPECT_EQ(DataFileText(), before);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2");
  });
  EXPECT_EQ(user.dialogs, 1);
}

struct TypedName {
  const char* name;
  std::vector<std::string> files;  // in the folder, the one to be opened first
  std::string typed;
};

void PrintTo(const TypedName& row, std::ostream* out) { *out << row.name; }

std::string NameOfTypedName(const testing::TestParamInfo<TypedName>& row) { return row.param.name; }

class EditorOpenByName : public EditorFiles, public testing::WithParamInterface<TypedName> {};

TEST_P(EditorOpenByName, OpensTheFileAsTypedOrElseWithTheExtension) {
  const std::vector<std::string>& files = GetParam().files;
  for (std::size_t i = 0; i < files.size(); ++i) {
    Wired(1, i == 0 ? 2 : 3, 4).SaveExpectationFile(ProjectFile(files[i]));
  }
  FileDialogUser user({ProjectFile(GetParam().typed)});
  Show([&] {
    Click(*form.BT_Fileopen);
    EXPECT_EQ(DataFileText(), "PROJEKTPFAD + \"" + files.front() + "\"");
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2");
  });
  EXPECT_EQ(user.dialogs, 1);
}

INSTANTIATE_TEST_SUITE_P(Names, EditorOpenByName,
                         testing::Values(TypedName{"WithoutExtensionAsTyped", {"ohne"}, "ohne"},
                                         TypedName{"ExtensionAdded", {"good.dat"}, "good"},
                                         TypedName{"AsTypedBeforeTheOtherOne", {"good", "good.dat"}, "good"},
                                         TypedName{"WithExtensionAsTyped", {"good.dat", "good"}, "good.dat"},
                                         TypedName{"OtherExtension", {"kabel.v2"}, "kabel.v2"},
                                         TypedName{"ExtensionAddedToAnother", {"kabel.v2.dat"}, "kabel.v2"}),
                         NameOfTypedName);

TEST_F(EditorFiles, NameOfNoFileIsRefusedAndAskedForAgain) {
  Wired(1, 2, 4).SaveExpectationFile(ProjectFile("gut.dat"));
  FileDialogUser user({ProjectFile("fehlt"), ProjectFile("gut")});
  Show([&] {
    Click(*form.BT_Fileopen);
    EXPECT_EQ(DataFileText(), "PROJEKTPFAD + \"gut.dat\"");
  });
  ASSERT_THAT(messages.others, SizeIs(1));
  EXPECT_EQ(messages.others[0].text, ProjectFile("fehlt") + "\nDie Datei wurde nicht gefunden.");
  EXPECT_EQ(user.dialogs, 2);
}

TEST_F(EditorFiles, OpenRefusesAReadOnlyFile) {
  const std::string file = UseExpectation(Wired(1, 2, 4));
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  FileDialogUser user({file, ""});
  form.KXEdit_Datafile.SetText("");
  Show([&] {
    Click(*form.BT_Fileopen);
    ASSERT_THAT(messages.others, SizeIs(1));
    EXPECT_THAT(messages.others[0].text, HasSubstr("schreibgeschützt"));
    EXPECT_EQ(DataFileText(), "");
  });
  EXPECT_EQ(user.dialogs, 2);
}

TEST_F(EditorFiles, SaveRefusesAReadOnlyFile) {
  const std::string file = UseExpectation(Wired(1, 2, 4));
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  FileDialogUser user({ProjectFile("kabel"), ""});
  Show([&] {
    Click(*form.BT_Filesave);
    ASSERT_THAT(messages.others, SizeIs(1));
    EXPECT_THAT(messages.others[0].text, HasSubstr("schreibgeschützt"));
  });
}

#ifndef _WIN32  // where no name can hold one
TEST_F(EditorFiles, OpenRefusesANameThatNoScriptCanHold) {
  const std::string file = ProjectFile("a\"b.dat");
  Wired(1, 2, 4).SaveExpectationFile(file);
  FileDialogUser user({file, ""});
  Show([&] {
    Click(*form.BT_Fileopen);
    ASSERT_THAT(messages.others, SizeIs(1));
    EXPECT_THAT(messages.others[0].text, HasSubstr("Anführungszeichen"));
    EXPECT_EQ(DataFileText(), "");
  });
  EXPECT_EQ(user.dialogs, 2);
}

TEST_F(EditorFiles, SaveRefusesANameThatNoScriptCanHold) {
  UseExpectation(Wired(1, 2, 4));
  FileDialogUser user({ProjectFile("a\"b.dat"), ""});
  Show([&] {
    Click(*form.BT_Filesave);
    ASSERT_THAT(messages.others, SizeIs(1));
    EXPECT_THAT(messages.others[0].text, HasSubstr("Anführungszeichen"));
  });
  EXPECT_FALSE(std::filesystem::exists(ProjectFile("a\"b.dat")));
}
#endif

TEST_F(EditorFiles, RefusedNameToSaveComesBackForCorrection) {
  UseExpectation(Wired(1, 2, 4));  // stands before the other in the dialog's list
  Wired(1, 2, 4).SaveExpectationFile(ProjectFile("zu.dat"));
  std::filesystem::permissions(ProjectFile("zu.dat"), std::filesystem::perms::owner_read);
  FileDialogUser user({ProjectFile("zu"), ProjectFile("zu2")});
  Show([&] {
    Click(*form.BT_Filesave);
    EXPECT_EQ(DataFileText(), "PROJEKTPFAD + \"zu2.dat\"");
  });
  EXPECT_THAT(messages.others, SizeIs(1));
  EXPECT_THAT(user.shownNames, ElementsAre("kabel.dat", HasSubstr("zu")));
  EXPECT_TRUE(std::filesystem::exists(ProjectFile("zu2.dat")));
}

TEST_F(EditorFiles, RefusedNameToOpenIsFollowedByAnotherChoice) {
  const std::string file = UseExpectation(Wired(1, 2, 4));
  Wired(3, 4, 5).SaveExpectationFile(ProjectFile("anders.dat"));
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  FileDialogUser user({file, ProjectFile("anders.dat")});
  Show([&] {
    Click(*form.BT_Fileopen);
    EXPECT_EQ(DataFileText(), "PROJEKTPFAD + \"anders.dat\"");
    EXPECT_EQ(TextOf(form.Mm_Soll), "3 4");
  });
  EXPECT_THAT(messages.others, SizeIs(1));
  EXPECT_EQ(user.dialogs, 2);
}

TEST_F(EditorFiles, SaveAndReopen) {
  FileDialogUser user({ProjectFile("neu.dat"), ProjectFile("neu.dat")});
  Show([&] {
    Enter(*form.Mm_Soll);
    Type("1 2 3");
    Enter(*form.Mm_SkipCon);
    Type("4 5");
    Enter(*form.Ed_Skip);
    Type("9");
    Replace(*form.Ed_Schwelle, "2,5");
    Click(*form.BT_Filesave);
    Replace(*form.Mm_Soll, "7 8");
    Click(*form.BT_Fileopen);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2 3");
    EXPECT_EQ(TextOf(form.Mm_SkipCon), "4 5");
    EXPECT_EQ(TextOf(form.Ed_Skip), " 9");
    EXPECT_EQ(TextOf(form.Ed_Schwelle), "2,5");
  });
  EXPECT_EQ(user.dialogs, 2);
}

TEST_F(EditorFiles, SavedFileStaysWhenCancelledLater) {
  FileDialogUser user({ProjectFile("neu.dat")});
  Show([&] {
    Click(*form.BT_Filesave);
    Click(*form.ButtonCancel);
  });
  EXPECT_TRUE(std::filesystem::exists(ProjectFile("neu.dat")));
}

TEST_F(EditorFiles, SaveAsksBeforeItReplacesAFileWhoseExtensionItAdded) {
  const std::string file = UseExpectation(Wired(1, 2, 4));
  form.KXEdit_Datafile.SetText("");
  FileDialogUser user({ProjectFile("kabel"), ""});
  messages.answer = mrCancel;
  Show([&] {
    Click(*form.BT_Filesave);
    ASSERT_THAT(messages.others, SizeIs(1));
    EXPECT_THAT(messages.others[0].text, HasSubstr("kabel.dat"));
  });
  EXPECT_EQ(TShortTestData(file).bis, 4);
  EXPECT_EQ(user.dialogs, 2);
}

TEST_F(EditorFiles, SaveAsksBeforeItReplacesAFile) {
  const std::string file = UseExpectation(Wired(1, 2, 4));
  form.KXEdit_Datafile.SetText("");
  FileDialogUser user({file});
  user.SaysNo();
  Show([&] {
    Click(*form.BT_Filesave);
    EXPECT_EQ(DataFileText(), "");
  });
  EXPECT_EQ(TShortTestData(file).bis, 4);
  EXPECT_EQ(user.dialogs, 1);
}

TEST_F(EditorFiles, SaveReplacesAFileWithoutAnExtensionThatItAskedAbout) {
  const std::string file = ProjectFile("ohne");
  Wired(1, 2, 4).SaveExpectationFile(file);
  UseDataFile(file);
  FileDialogUser user({file});
  user.SaysYes();
  Show([&] {
    Replace(*form.Ed_MaxChannel, "9");
    Click(*form.BT_Filesave);
    EXPECT_EQ(DataFileText(), "PROJEKTPFAD + \"ohne\"");
  });
  EXPECT_EQ(TShortTestData(file).bis, 9);
  EXPECT_FALSE(std::filesystem::exists(ProjectFile("ohne.dat")));
}

TEST_F(EditorFiles, FileOutsideTheProjectIsALiteral) {
  const std::string outside = (std::filesystem::path(::testing::TempDir()) / "editor_outside.dat").string();
  std::filesystem::remove(outside);
  FileDialogUser user({outside});
  Show([&] {
    Click(*form.BT_Filesave);
    EXPECT_EQ(DataFileText(), "\"" + outside + "\"");
  });
  EXPECT_TRUE(std::filesystem::remove(outside));
}

TEST_F(EditorFiles, UnknownVariableInTheNameIsReported) {
  FileDialogUser user({});
  Show([&] {
    Replace(*form.KXEdit_Datafile.Control(), "NICHTDA + \"a\"");
    Click(*form.BT_Fileopen);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("NICHTDA")));
  });
  EXPECT_EQ(user.dialogs, 0);
}

}  // namespace
}  // namespace shorttest::testkit
