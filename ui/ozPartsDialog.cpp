#include "ozPartsDialog.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMText.h"
#include "ozPolicyView.h"
#include "ozViewPlatform.h"

namespace {

// The part types' captions in the question, by part type - 1.
const char* const TypeCaptions[] = {"Check box", "Numeric",        "Edit text", "Combo box",
                                    "Text",      "Drop-down list", "List box",  "Multi-line text"};
constexpr unsigned long TypeCount = sizeof TypeCaptions / sizeof TypeCaptions[0];

// A new part of type with nothing set; null for an unknown type.
std::unique_ptr<ozADMCtrl> NewPart(unsigned long type)
{
    switch (type) {
        case CtrlCheckBox:
            return std::make_unique<ozADMCheckBox>();
        case CtrlNumeric:
            return std::make_unique<ozADMNumeric>();
        case CtrlEditText:
            return std::make_unique<ozADMEditText>();
        case CtrlComboBox:
            return std::make_unique<ozADMComboBox>();
        case CtrlText:
            return std::make_unique<ozADMText>();
        case CtrlDropdownList:
            return std::make_unique<ozADMDropdownList>();
        case CtrlListBox:
            return std::make_unique<ozADMListBox>();
        case CtrlMultiText:
            return std::make_unique<ozADMMultiText>();
        default:
            return nullptr;
    }
}

class ozPartTypeDialog final : public ozDialog {
public:
    explicit ozPartTypeDialog(std::function<void(unsigned long)> chosen)
        : m_chosen(std::move(chosen))
    {
    }

    const ozDialogTemplate& Layout() const override
    {
        static const ozDialogTemplate layout = [] {
            ozDialogTemplate dialog{DialogNewPartType, "New", 142, 144, {}};
            dialog.controls.emplace_back(PartTypeDialogGroup, ozControlKind::Group, "Part type", 7,
                                         7, 128, 110);
            for (unsigned long type = 1; type <= TypeCount; ++type)
                dialog.controls.emplace_back(PartTypeDialogGroup + static_cast<int>(type),
                                             ozControlKind::Radio, TypeCaptions[type - 1], 15,
                                             6 + 12 * static_cast<int>(type), 110, 10);
            dialog.controls.emplace_back(ozDialogOK, ozControlKind::Button, "OK", 31, 123, 50, 14,
                                         ozControlDefault);
            dialog.controls.emplace_back(ozDialogCancel, ozControlKind::Button, "Cancel", 85, 123,
                                         50, 14);
            return dialog;
        }();
        return layout;
    }

    // Check box (type 1) is checked first.
    void Init(ozForm& form) override { form.Check(PartTypeDialogGroup + 1, true); }

    bool Accept(ozForm& form) override
    {
        for (unsigned long type = 1; type <= TypeCount; ++type)
            if (form.Checked(PartTypeDialogGroup + static_cast<int>(type))) {
                if (m_chosen)
                    m_chosen(type);
                return true;
            }
        return false;
    }

private:
    std::function<void(unsigned long)> m_chosen;
};

class ozPartsDialog final : public ozDialog {
public:
    ozPartsDialog(ozADMPolicy& policy, const ozEditorContext& context)
        : m_policy(policy), m_context(context)
    {
        const CCollection<ozADMCtrl>& parts = policy.Controls();
        for (int pos = 0; pos < parts.Count(); ++pos)
            if (parts.At(pos) != nullptr)
                m_parts.emplace_back(parts.At(pos)->Copy());
    }

    const ozDialogTemplate& Layout() const override
    {
        using K = ozControlKind;
        // The parts on the left, their buttons in a column on the right, OK and Cancel below.
        static const ozDialogTemplate layout{
            DialogParts,
            "Control Properties",
            228,
            162,
            {
                ozControlSpec(PartsDialogList, K::List, "", 7, 7, 156, 126),
                ozControlSpec(PartsDialogInsert, K::Button, "Insert", 171, 7, 50, 14),
                ozControlSpec(PartsDialogDelete, K::Button, "Delete", 171, 25, 50, 14),
                ozControlSpec(PartsDialogUp, K::Button, "Up", 171, 49, 50, 14),
                ozControlSpec(PartsDialogDown, K::Button, "Down", 171, 67, 50, 14),
                ozControlSpec(PartsDialogProps, K::Button, "Props", 171, 91, 50, 14),
                ozControlSpec(ozDialogOK, K::Button, "OK", 117, 141, 50, 14, ozControlDefault),
                ozControlSpec(ozDialogCancel, K::Button, "Cancel", 171, 141, 50, 14),
            },
        };
        return layout;
    }

    void Init(ozForm& form) override
    {
        m_form = &form;
        Show(-1);
    }

    void Command(ozForm& form, int id, ozFormEvent event) override
    {
        int row = form.SelectedRow(PartsDialogList);
        bool selected = row >= 0 && row < static_cast<int>(m_parts.size());
        if (id == PartsDialogList && event == ozFormEvent::SelectionChanged)
            Show(row);
        else if (id == PartsDialogInsert)
            Insert(row);
        else if (id == PartsDialogDelete && selected) {
            m_parts.erase(m_parts.begin() + row);
            Show(std::min(row, static_cast<int>(m_parts.size()) - 1));
        } else if ((id == PartsDialogUp && selected && row > 0) ||
                   (id == PartsDialogDown && selected &&
                    row + 1 < static_cast<int>(m_parts.size()))) {
            int to = id == PartsDialogUp ? row - 1 : row + 1;
            std::swap(m_parts[row], m_parts[to]);
            Show(to);
        } else if (id == PartsDialogProps && selected)
            OpenPage(row);
    }

    bool Accept(ozForm&) override
    {
        CCollection<ozADMCtrl>& parts = m_policy.Controls();
        parts.RemoveAll();
        for (auto& part : m_parts)
            m_policy.AddControl(part.release());
        m_parts.clear();
        if (m_context.edited)
            m_context.edited();
        return true;
    }

private:
    // Lists the working parts, selects row (-1: none) and sets the buttons' states.
    void Show(int row)
    {
        std::vector<std::string> rows;
        for (const auto& part : m_parts)
            rows.push_back(std::string(part->Name() != nullptr ? part->Name() : "") + " (" +
                           ozPartTypeName(*part) + ")");
        int count = static_cast<int>(rows.size());
        m_form->Rows(PartsDialogList, rows);
        m_form->SelectRow(PartsDialogList, row);
        bool selected = row >= 0 && row < count;
        m_form->Enable(PartsDialogDelete, selected);
        m_form->Enable(PartsDialogProps, selected);
        m_form->Enable(PartsDialogUp, selected && row > 0);
        m_form->Enable(PartsDialogDown, selected && row + 1 < count);
    }

    void Insert(int row)
    {
        m_chosenType = 0;
        m_context.platform.RunDialog(
            ozCreatePartTypeDialog([this](unsigned long type) { m_chosenType = type; }),
            [this, row](ozDialog&, bool accepted) {
                std::unique_ptr<ozADMCtrl> part = NewPart(m_chosenType);
                if (!accepted || part == nullptr)
                    return;
                std::string name = NewPartName();
                part->Name(name.empty() ? TypeCaptions[m_chosenType - 1] : name.c_str());
                part->Policy(&m_policy);
                part->Key(m_policy.RegKey());
                // A text part is its keyword alone; a list box has its empty value name already.
                if (m_chosenType != CtrlText)
                    part->ValueName("");
                int at = row >= 0 && row < static_cast<int>(m_parts.size())
                             ? row + 1
                             : static_cast<int>(m_parts.size());
                m_parts.insert(m_parts.begin() + at, std::move(part));
                Show(at);
                OpenPage(at);
            });
    }

    std::string NewPartName() const
    {
        return m_context.control != nullptr
                   ? m_context.control->GetString(HostTextNewElementName)
                   : ozApplication::Instance().MessageText(HostTextNewElementName);
    }

    // Opens the page of the part at row; an accepted page shows the list again, keeping row.
    void OpenPage(int row)
    {
        ozEditorContext page{m_context.platform, m_context.control, [this, row] { Show(row); },
                             m_context.browse};
        if (std::unique_ptr<ozDialog> dialog = ozCreatePartPage(*m_parts[row], page))
            m_context.platform.RunDialog(std::move(dialog), nullptr);
    }

    ozADMPolicy& m_policy;
    ozEditorContext m_context;
    std::vector<std::unique_ptr<ozADMCtrl>> m_parts;
    ozForm* m_form = nullptr;
    unsigned long m_chosenType = 0;
};

}  // namespace

std::unique_ptr<ozDialog> ozCreatePartsDialog(ozADMPolicy& policy, const ozEditorContext& context)
{
    return std::make_unique<ozPartsDialog>(policy, context);
}

std::unique_ptr<ozDialog> ozCreatePartTypeDialog(std::function<void(unsigned long type)> chosen)
{
    return std::make_unique<ozPartTypeDialog>(std::move(chosen));
}
