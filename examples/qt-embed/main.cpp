// A small Qt program around ozADMWidget: a window with the widget, a label that follows the
// widget's statusChange signal, and a button that switches between the policy view and the
// registry view. Run it as
//
//   qt-embed TEMPLATE [PROFILE.ozp]        a window to edit the profile
//   qt-embed --list TEMPLATE [PROFILE.ozp] prints the configured policies and ends
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>
#include <cstdio>

#include <ozADMWidget.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QStringList args = QApplication::arguments().mid(1);
    const bool list = !args.isEmpty() && args.front() == QStringLiteral("--list");
    if (list)
        args.removeFirst();
    if (args.isEmpty()) {
        std::fprintf(stderr, "usage: qt-embed [--list] TEMPLATE [PROFILE.ozp]\n");
        return 2;
    }

    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* status = new QLabel(QStringLiteral("No changes"));
    auto* switchView = new QPushButton(QStringLiteral("Registry view"));
    auto* policies = new ozADMWidget;
    layout->addWidget(status);
    layout->addWidget(switchView);
    layout->addWidget(policies, 1);
    QObject::connect(policies, &ozADMWidget::statusChange, status, [=] {
        status->setText(policies->ShouldSave() ? QStringLiteral("Changed, not saved")
                                               : QStringLiteral("No changes"));
    });
    QObject::connect(switchView, &QPushButton::clicked, policies, [=] {
        const bool toRegistry = policies->DisplayMode() == 0;
        policies->DisplayMode(toRegistry ? 1 : 0);
        policies->Refresh();
        switchView->setText(toRegistry ? QStringLiteral("Policy view")
                                       : QStringLiteral("Registry view"));
    });

    if (!policies->SetADM(args[0]))
        return 1;
    if (args.size() > 1 && !policies->Load(args[1], QString()))
        return 1;
    if (list) {
        for (const QString& policy : policies->ConfiguredPolicies().value_or(QStringList()))
            std::printf("%s\n", qPrintable(policy));
        return 0;
    }
    window.resize(900, 600);
    window.show();
    return QApplication::exec();
}
