// The legend: its caption and rows from the host texts, with the registry view's images when
// opened with them, without through the control's ShowLegend.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "tests/support/ozRecordingHostUI.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozLegendDialog.h"
#include "ui/ozViews.h"

TEST(LegendDialogTest, CaptionAndRowsComeFromTheHostTexts)
{
    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
    views.Attach(control);
    control.AddString(76, "Legend");
    // 73 is never set: its label stays empty.
    for (int text = 66; text <= 72; ++text)
        control.AddString(static_cast<unsigned short>(text), ("t" + std::to_string(text)).c_str());

    control.ShowLegend();
    ASSERT_NE(platform.TopDialog(), nullptr);
    EXPECT_EQ(platform.TopDialog()->Layout().caption, "Legend");
    const ozHeadlessForm::Control* rows = platform.TopForm()->Find(ozLegendDialog::Rows);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->rows,
              (std::vector<std::string>{"t66", "t67", "t68", "t72", "t69", "t70", "t71", ""}));
    EXPECT_TRUE(rows->images.empty());
    EXPECT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(platform.TopDialog(), nullptr);

    // Opened from the registry view: the same rows, each with its image.
    platform.RunDialog(std::make_unique<ozLegendDialog>(control, true), [](ozDialog&, bool) {});
    rows = platform.TopForm()->Find(ozLegendDialog::Rows);
    EXPECT_EQ(rows->images, (std::vector<int>{6, 2, 4, 8, 10, 12, 14, 16}));
    EXPECT_EQ(rows->rows.size(), 8u);
}
