#include "ozLegendDialog.h"

#include "control/CADMCtrl.h"
#include "ozImages.h"

namespace {

constexpr int LegendDialogResource = 252;

}  // namespace

ozLegendDialog::ozLegendDialog(const CADMCtrl& control, bool withImages)
    : m_control(control), m_withImages(withImages)
{
    m_layout.resource = LegendDialogResource;
    m_layout.caption = control.GetString(CaptionText);
    m_layout.width = 213;
    m_layout.height = 161;
    m_layout.controls = {
        ozControlSpec(Frame, ozControlKind::Group, "", 5, 5, 200, 130),
        ozControlSpec(Rows, ozControlKind::ImageRows, "", 15, 10, 185, 115),
        ozControlSpec(ozDialogOK, ozControlKind::Button, "OK", 155, 140, 50, 14, ozControlDefault),
    };
}

const std::vector<std::pair<int, int>>& ozLegendDialog::RowTexts()
{
    // Plain keys first, then those from the template; the erased ones close each half.
    static const std::vector<std::pair<int, int>> rows = {
        {RegKeyImageNotSaved, 66},         {RegKeyImageSaved, 67},
        {RegKeyImageDelete, 68},           {RegKeyImageErase, 72},
        {RegKeyImageTemplateNotSaved, 69}, {RegKeyImageTemplateSaved, 70},
        {RegKeyImageTemplateDelete, 71},   {RegKeyImageTemplateErase, 73},
    };
    return rows;
}

void ozLegendDialog::Init(ozForm& form)
{
    std::vector<std::pair<int, std::string>> rows;
    for (const auto& [image, text] : RowTexts())
        rows.emplace_back(image, m_control.GetString(static_cast<unsigned short>(text)));
    form.ImageRows(Rows, rows, m_withImages);
}
