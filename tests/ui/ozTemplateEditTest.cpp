// A real template changed through the policy view as a user changes it: a policy renamed, one
// deleted, a part moved up. Written back and read again, the tree differs from the one first
// read exactly by those changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozPartsDialog.h"
#include "ui/ozViews.h"

namespace {

using Lines = std::vector<std::string>;

// The line naming an element, and the end of its block: the lines below it indented deeper.
std::size_t LineOf(const Lines& lines, const std::string& start)
{
    auto found = std::find_if(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.find(start) != std::string::npos;
    });
    return static_cast<std::size_t>(found - lines.begin());
}

std::size_t BlockEnd(const Lines& lines, std::size_t line)
{
    std::size_t indent = lines[line].find_first_not_of(' ');
    std::size_t end = line + 1;
    while (end < lines.size() && lines[end].find_first_not_of(' ') > indent)
        ++end;
    return end;
}

TEST(TemplateEdit, ARealTemplateChangesOnlyWhereTheUserChangedIt)
{
    const std::string path = ozCorpusPath("adm/wpkg-gp/wpkg-gp.adm");
    if (path.empty())
        GTEST_SKIP() << "no template corpus";
    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
    views.Attach(control);
    ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
    control.DisplayMode(DisplayPolicies);
    ASSERT_TRUE(control.SetADM(path.c_str()));
    control.WithADMEdit(true);
    const Lines before = ozDescribeTree(*control.Code()->tree);
    ozHeadlessTree& tree = platform.Tree();

    ASSERT_TRUE(tree.SelectByUser(tree.Find("MACHINE\\WPKG\\Wpkg-GP Logging settings")));
    tree.Key(ozKeyF2);
    ASSERT_TRUE(tree.EndLabelEdit("Logging"));
    ui.answerYes = true;
    tree.RightClick(tree.Find("MACHINE\\WPKG\\Wpkg-GP Network Connection Settings"));
    ASSERT_TRUE(platform.Choose("Delete"));
    tree.RightClick(tree.Find("MACHINE\\WPKG\\Wpkg-GP Misc Settings"));
    ASSERT_TRUE(platform.Choose("Control Properties"));
    ASSERT_TRUE(platform.TopForm()->ChooseRow(PartsDialogList, 4));
    ASSERT_TRUE(platform.ClickDialogButton(PartsDialogUp));
    ASSERT_TRUE(platform.EndDialog(true));

    ozTestFile written("wpkg-gp-changed.adm");
    ASSERT_TRUE(control.WriteADM(written.Path()));
    control.Cleanup();
    ASSERT_TRUE(control.SetADM(written.Path()));

    Lines expected = before;
    std::size_t renamed = LineOf(expected, "POLICY \"Wpkg-GP Logging settings\"");
    expected[renamed].replace(expected[renamed].find("Wpkg-GP Logging settings"), 24, "Logging");
    std::size_t deleted = LineOf(expected, "POLICY \"Wpkg-GP Network Connection Settings\"");
    ASSERT_LT(deleted, expected.size());
    expected.erase(expected.begin() + deleted, expected.begin() + BlockEnd(expected, deleted));
    std::size_t lower = LineOf(expected, "PART \"Show an activity indicator\"");
    std::size_t upper = LineOf(expected, "PART \"Allow execution by normal users\"");
    ASSERT_LT(upper, lower);
    Lines moved(expected.begin() + lower, expected.begin() + BlockEnd(expected, lower));
    expected.erase(expected.begin() + lower, expected.begin() + BlockEnd(expected, lower));
    expected.insert(expected.begin() + upper, moved.begin(), moved.end());
    EXPECT_EQ(ozFirstDifference(expected, ozDescribeTree(*control.Code()->tree)), "");
}

}  // namespace
