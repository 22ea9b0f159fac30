// Filling the policy view through the headless widgets, as the control does after every load
// and refresh: from the corpus's msedge.adm (1146 policies) and from generated templates of a
// tenth, the same, ten and twenty times as many policies, to show that the fill grows linearly
// with the number of items.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "control/CADMCtrl.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozViews.h"

namespace {

const std::string Template = OZ_CORPUS_DIR "/adm/msedge/msedge.adm";

class SilentUI : public ozHostUI {
public:
    bool ShowMessage(tHOSTMESSAGEKIND, const std::string&) override { return false; }
};

// A control with its views over the headless widgets, showing the policy view.
class Session {
public:
    Session()
    {
        views.Attach(control);
        control.DisplayMode(DisplayPolicies);
    }
    bool Load(const std::string& path)
    {
        return control.SetEBNF(OZ_SOURCE_DIR "/grammar/adm.bnf") && control.SetADM(path.c_str());
    }
    void Fill() { views.Show(DisplayPolicies, control.Code(), true, true); }
    int64_t ItemCount() { return Count(platform.Tree().Root()); }

private:
    int64_t Count(ozTreeItem first)
    {
        int64_t count = 0;
        for (ozTreeItem item = first; item != ozNoItem; item = platform.Tree().NextSibling(item))
            count += 1 + Count(platform.Tree().FirstChild(item));
        return count;
    }

    SilentUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

void FillRepeatedly(benchmark::State& state, const std::string& path)
{
    Session session;
    if (!session.Load(path)) {
        state.SkipWithError(("cannot load " + path).c_str());
        return;
    }
    for (auto _ : state)
        session.Fill();
    int64_t items = session.ItemCount();
    state.counters["items"] = static_cast<double>(items);
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * items);
}

void BM_FillMsedge(benchmark::State& state)
{
    if (!std::filesystem::exists(Template)) {
        state.SkipWithError(("the corpus template is not there: " + Template).c_str());
        return;
    }
    FillRepeatedly(state, Template);
}
BENCHMARK(BM_FillMsedge)->Unit(benchmark::kMillisecond);

// Both classes, each with policies / 20 categories of ten policies with one part.
std::string GeneratedTemplate(int policies)
{
    std::string text;
    int number = 0;
    for (const char* className : {"MACHINE", "USER"}) {
        text += std::string("CLASS ") + className + "\r\n";
        for (int category = 0; category < policies / 20; ++category) {
            std::string name = std::to_string(category);
            text += "CATEGORY \"Category " + name + "\"\r\n KEYNAME \"Software\\Bench\\C" + name +
                    "\"\r\n";
            for (int i = 0; i < 10; ++i, ++number) {
                std::string policy = std::to_string(number);
                text += " POLICY \"Policy " + policy + "\"\r\n  VALUENAME v" + policy +
                        "\r\n  PART \"Part " + policy + "\" EDITTEXT VALUENAME p" + policy +
                        " END PART\r\n END POLICY\r\n";
            }
            text += "END CATEGORY\r\n";
        }
    }
    return text;
}

void BM_FillGenerated(benchmark::State& state)
{
    std::string path =
        (std::filesystem::temp_directory_path() / "ozadm-bench-policy-view.adm").string();
    std::ofstream(path, std::ios::binary) << GeneratedTemplate(static_cast<int>(state.range(0)));
    FillRepeatedly(state, path);
    std::filesystem::remove(path);
}
BENCHMARK(BM_FillGenerated)
    ->Arg(120)
    ->Arg(1140)
    ->Arg(11460)
    ->Arg(22920)
    ->Unit(benchmark::kMillisecond);

}  // namespace
