// The start of the desktop program ozadm-gui to a filled policy view of the corpus's msedge.adm
// (1146 policies), offscreen: the application object, and then the window with its menus, the
// host string table read and added, the template loaded, the policy view filled, the window
// shown and its first events handled; and the program's own loading by the system (ozadm-gui
// --help run as a process through the shell: its libraries loaded and linked, nothing shown).
// The three together are what a user waits for.
#include <benchmark/benchmark.h>

#include <QtWidgets/QApplication>
#include <cstdlib>
#include <map>
#include <memory>

#include "control/ozHostUI.h"
#include "ozBundledFiles.h"
#include "ozDesktopWindow.h"
#include "ozHostStrings.h"

namespace {

const QString Template = QStringLiteral(OZ_CORPUS_DIR "/adm/msedge/msedge.adm");

class SilentUI : public ozHostUI {
public:
    bool ShowMessage(tHOSTMESSAGEKIND, const std::string&) override { return false; }
};

int argc = 1;
char name[] = "ozDesktopStartupBench";
char* argv[] = {name, nullptr};

void ProgramLoad(benchmark::State& state)
{
    for (auto _ : state)
        if (std::system("'" OZADM_GUI "' --help >/dev/null") != 0) {
            state.SkipWithError("ozadm-gui --help failed");
            return;
        }
}
BENCHMARK(ProgramLoad)->Unit(benchmark::kMillisecond);

void ApplicationStart(benchmark::State& state)
{
    for (auto _ : state) {
        QApplication application(argc, argv);
        QApplication::processEvents();
    }
}
BENCHMARK(ApplicationStart)->Unit(benchmark::kMillisecond);

void WindowToFilledPolicyView(benchmark::State& state)
{
    QApplication application(argc, argv);
    SilentUI ui;
    for (auto _ : state) {
        std::map<unsigned short, std::string> texts;
        std::string error;
        if (!ozReadHostStrings(ozBundledFile("strings-en.txt"), texts, error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        auto window = std::make_unique<ozDesktopWindow>(texts, &ui);
        window->show();
        if (!window->Open(Template)) {
            state.SkipWithError("msedge.adm cannot be opened (is the corpus there?)");
            return;
        }
        QApplication::processEvents();
        state.PauseTiming();
        window.reset();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(WindowToFilledPolicyView)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
