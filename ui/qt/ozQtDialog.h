// An ozDialog as a Qt dialog built from its layout: the controls placed by dialog units of the
// dialog's font, the caption of a labelled control as a label in the front of the control's own
// area (at the left of a one-line control, with the one-line controls of one column sharing the
// widest of their labels; at the top of a list, a tree or an edit of several lines). The
// dialog's commands go to the ozDialog; OK (1) ends it when Accept agrees (after the typing of
// edits that report when left is reported), Cancel (2), Escape and the close box end it.
//
// The window does not own the dialog logic; whoever opens it keeps the logic alive as long as
// the window.
#pragma once

#include <QtWidgets/QDialog>
#include <memory>

#include "ozQtForm.h"
#include "ui/ozViewPlatform.h"

class ozQtDialogWindow final : public QDialog {
public:
    // The window of dialog over parent; modeless windows hide on OK and Cancel instead of
    // ending.
    ozQtDialogWindow(ozDialog& dialog, QWidget* parent, bool modeless);
    ~ozQtDialogWindow() override;

    ozDialog& Logic() const { return m_dialog; }
    ozQtForm<ozForm>& Form() { return m_form; }
    // The widget of control id, for whoever stands for the user.
    QWidget* ControlWidget(int id) const;
    // Builds the controls again from the dialog's layout, then Init.
    void Build();

    // Presses OK as the user does: the dialog ends (or hides) when the logic accepts.
    void PressOK();

protected:
    void reject() override;

private:
    void Command(int id, ozFormEvent event);

    ozDialog& m_dialog;
    ozQtForm<ozForm> m_form;
    bool m_modeless;
};

// A modeless dialog (the search sheet) over its window.
class ozQtModeless final : public ozModelessDialog {
public:
    explicit ozQtModeless(std::unique_ptr<ozQtDialogWindow> window);
    ~ozQtModeless() override;

    ozQtDialogWindow& Window() const { return *m_window; }

    void Show(bool visible) override;
    bool Shown() const override;
    void Rebuild() override { m_window->Build(); }
    ozForm& Form() override { return m_window->Form(); }

private:
    std::unique_ptr<ozQtDialogWindow> m_window;
};
