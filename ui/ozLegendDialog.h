// The legend (dialog 252): what each image of the registry view's keys means, one row per key
// state with its image and a label, under a caption. Caption and labels are host texts (76 and
// 66 to 73) read when the dialog opens, so a host that changes them shows the new ones. Opened
// from the registry view it shows the images; opened through the control's ShowLegend it draws
// no rows, only its frame, caption and OK.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ozForm.h"

class CADMCtrl;

class ozLegendDialog : public ozDialog {
public:
    enum : int {
        Frame = 1000,
        Rows = 1001,  // the ImageRows control
    };
    enum : int {
        CaptionText = 76,
        FirstLabelText = 66,
    };

    // The control must outlive the dialog.
    ozLegendDialog(const CADMCtrl& control, bool withImages);

    // The rows top to bottom: each image index of the registry view's images and the host
    // text that labels it.
    static const std::vector<std::pair<int, int>>& RowTexts();

    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm& form) override;

private:
    const CADMCtrl& m_control;
    bool m_withImages;
    ozDialogTemplate m_layout;
};
