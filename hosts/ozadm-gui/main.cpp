// ozadm-gui: the desktop program around ozADMWidget. Reads its command line (ozDesktopOptions),
// the host string table of the language chosen, and opens the files named in its window.
#include <QtCore/QLocale>
#include <QtWidgets/QApplication>
#include <iostream>
#include <map>

#include "loader/ozADMXLoad.h"
#include "ozBundledFiles.h"
#include "ozDesktopOptions.h"
#include "ozDesktopWindow.h"
#include "ozHostStrings.h"

int main(int argc, char** argv)
{
    // --help needs no display.
    for (int i = 1; i < argc; ++i)
        if (std::string(argv[i]) == "--help" || std::string(argv[i]) == "-h") {
            std::cout << ozDesktopHelp();
            return 0;
        }
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ozADM"));
    QApplication::setApplicationName(QStringLiteral("ozADM"));
    QGuiApplication::setDesktopFileName(QStringLiteral("ozadm-gui"));

    // Qt has taken its own options (-platform, ...) out of the arguments.
    std::vector<std::string> args;
    for (const QString& argument : QApplication::arguments().mid(1))
        args.push_back(argument.toLocal8Bit().toStdString());
    ozDesktopOptions options;
    std::string error;
    if (!ozReadDesktopOptions(args, options, error)) {
        std::cerr << "ozadm-gui: " << error << " (ozadm-gui --help)\n";
        return 2;
    }
    std::string language = options.language;
    if (language.empty())
        language = QLocale::system().language() == QLocale::German ? "de" : "en";
    std::map<unsigned short, std::string> texts;
    if (!ozReadHostStrings(ozBundledFile("strings-" + language + ".txt"), texts, error)) {
        std::cerr << "ozadm-gui: " << error << '\n';
        return 1;
    }

    ozTemplateLanguage(options.templateLanguage.c_str());
    ozDesktopWindow window(texts);
    window.Widget().WithADMEdit(options.templateEditing);
    // The files are shown in the view chosen at once, not first in another.
    window.Widget().DisplayMode(options.displayMode);
    window.show();
    const ozDesktopFiles& files = options.files;
    if (!files.templates.empty() || files.profiles.AnyToLoad() || !files.profiles.gpo.empty())
        window.Open(files);
    window.ShowView(options.displayMode);
    return QApplication::exec();
}
