// The part property pages through the headless platform on the template with every part type:
// what the user sets on each page comes back after the template is written and read again;
// refused fields keep the page open and change nothing; Cancel changes nothing.
#include <gtest/gtest.h>

#include "control/CADMCtrl.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/tTreeCodeHandle.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozActionListDialog.h"
#include "ui/ozPartPage.h"

namespace {

using P = ozPartPage;

const char* const Proxy = "MACHINE\\Network\\Proxy server";
const char* const Hosts = "MACHINE\\Network\\Lists\\Host list";
const char* const Wallpaper = "USER\\Desktop\\Wallpaper";

// What the user does on the dialog on top: 'T' types text, 'C' / 'U' checks / clears, 'R'
// chooses row text, 'B' clicks, 'O' presses OK.
struct Step {
    char action;
    int id;
    std::string text;
};

// The description lines of the part named name and of everything below it, one string.
std::string PartDescription(ozADMTree& tree, const std::string& name)
{
    std::string text;
    size_t depth = std::string::npos;
    for (const std::string& line : ozDescribeTree(tree)) {
        size_t indent = line.find_first_not_of(' ');
        if (depth != std::string::npos && indent <= depth)
            break;
        if (depth == std::string::npos &&
            line.compare(indent, 7 + name.size(), "PART \"" + name + "\"") == 0)
            depth = indent;
        if (depth != std::string::npos)
            text += line.substr(depth) + "\n";
    }
    return text;
}

// A control with the template, and a part's page opened on it.
class PageSession {
public:
    PageSession(const char* policy, const char* part)
    {
        EXPECT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        EXPECT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        for (unsigned short number = 200; number <= 204; ++number)
            control.AddString(number, (std::to_string(number) + ":%s|%s|%s").c_str());
        ozADMPolicy* found = ozFindPolicy(control.Code(), policy);
        this->part = found != nullptr ? ozFindPart(*found, part) : nullptr;
        if (this->part == nullptr)
            return;
        ozEditorContext context{platform, &control, [this] { ++edits; }, {}};
        platform.RunDialog(ozCreatePartPage(*this->part, context), [](ozDialog&, bool) {});
    }
    void Run(const std::vector<Step>& steps)
    {
        for (const Step& step : steps) {
            ozHeadlessForm& form = *platform.TopForm();
            bool done = step.action == 'T'   ? form.Type(step.id, step.text)
                        : step.action == 'C' ? form.CheckByUser(step.id, true)
                        : step.action == 'U' ? form.CheckByUser(step.id, false)
                        : step.action == 'R' ? form.ChooseRow(step.id, std::stoi(step.text))
                        : step.action == 'B' ? form.Click(step.id)
                                             : platform.EndDialog(true);
            ASSERT_TRUE(done) << step.action << " " << step.id;
        }
    }
    // The part as the written template reads back.
    std::string Reloaded(const std::string& name)
    {
        ozTestFile file("ozadm-part-pages.adm");
        EXPECT_TRUE(control.WriteADM(file.Path()));
        ozTemplateLoad reloaded;
        EXPECT_TRUE(reloaded.Load(file.Path())) << reloaded.Message();
        return PartDescription(reloaded.Tree(), name);
    }

    std::string Message() const { return ui.messages.empty() ? "" : ui.messages.back().text; }
    std::vector<std::string> Described() const { return ozDescribeTree(*control.Code()->tree); }

    ozRecordingHostUI ui;
    CADMCtrl control{ui};
    ozHeadlessPlatform platform{ui};
    ozADMCtrl* part = nullptr;
    int edits = 0;
};

TEST(PartPagesTest, EveryTypeStoresItsFieldsAndTheTemplateKeepsThem)
{
    const struct {
        const char* policy;
        const char* part;
        std::vector<Step> steps;
        const char* expected;  // the part's description, by its new name when it was renamed
    } cases[] = {
        {Wallpaper,
         "Tile the picture",
         {{'T', P::NameEdit, "Tiled"},
          {'T', P::KeyEdit, "Software\\Policies\\ozADM\\Desktop\\Tile"},
          {'T', P::ValueNameEdit, "TileIt"},
          {'T', P::ClientExtEdit, "{0A}"},
          {'U', P::DefCheckedCheck, ""},
          {'R', P::OnKindList, "1"},
          {'T', P::OnValueEdit, "5"},
          {'R', P::OffKindList, "3"},
          {'B', P::ActionListOffButton, ""},
          {'B', ozActionListDialog::InsertButton, ""},
          {'O', 0, ""}},
         "PART \"Tiled\" type 1 key 1:Software\\Policies\\ozADM\\Desktop\\Tile value name "
         "\"TileIt\" required no client ext \"{0A}\"\n"
         "  default no on NUMERIC 5 off DELETE\n"
         "  on actions 1\n"
         "    key 1:Software\\Policies\\ozADM\\Desktop\\Style value name \"Stretch\" value DELETE\n"
         "  off actions 2\n"
         "    key 1:Software\\Policies\\ozADM\\Desktop value name \"Stretch\" value NUMERIC 2\n"
         "    key 1:Software\\Policies\\ozADM\\Desktop value name \"New Item\" value STRING "
         "\"\"\n"},
        {Proxy,
         "Port",
         {{'T', P::MinEdit, "2"},
          {'T', P::MaxEdit, "4294967295"},
          {'T', P::SpinEdit, "0"},
          {'T', P::DefaultNumberEdit, ""},
          {'U', P::RequiredCheck, ""},
          {'C', P::TxtConvertCheck, ""}},
         "PART \"Port\" type 2 key 2:Software\\Policies\\ozADM\\Network value name \"ProxyPort\" "
         "required no client ext none\n"
         "  default none min 2 max 4294967295 spin 0 txtconvert yes\n"},
        {Proxy,
         "Server name",
         {{'T', P::MaxLenEdit, ""},
          {'T', P::DefaultTextEdit, "%HOST%"},
          {'C', P::ExpandableCheck, ""},
          {'T', P::KeyEdit, "Software\\Other"}},
         "PART \"Server name\" type 3 key 2:Software\\Other value name \"ProxyServer\" required "
         "yes "
         "client ext none\n"
         "  default \"%HOST%\" maxlen 0 expandable yes\n"},
        {Proxy,
         "Bypass the proxy for",
         {{'R', P::SuggestionList, "0"},
          {'B', P::RemoveSuggestionButton, ""},
          {'T', P::SuggestionEdit, "x.test"},
          {'B', P::AddSuggestionButton, ""},
          {'U', P::NoSortCheck, ""},
          {'T', P::MaxLenEdit, "10"},
          {'T', P::DefaultTextEdit, ""},
          {'C', P::RequiredCheck, ""}},
         "PART \"Bypass the proxy for\" type 4 key 2:Software\\Policies\\ozADM\\Network value name "
         "\"Bypass\" required yes client ext none\n"
         "  default none maxlen 10 expandable yes\n"
         "  nosort no\n"
         "  suggestion \"*.intranet\"\n"
         "  suggestion \"*.example.com\"\n"
         "  suggestion \"x.test\"\n"},
        {Proxy,
         "This text explains the settings below.",
         {{'T', P::NameEdit, "Read me"}},
         "PART \"Read me\" type 5\n"},
        {Proxy,
         "Authentication",
         {{'R', P::ItemList, "3"},
          {'B', P::UpButton, ""},
          {'C', P::DefaultItemCheck, ""},
          {'R', P::ItemList, "0"},
          {'T', P::ItemNameEdit, "Nothing"},
          {'R', P::ItemKindList, "1"},
          {'T', P::ItemValueEdit, "n"},
          {'R', P::ItemList, "1"},
          {'B', P::RemoveItemButton, ""},
          {'B', P::AddItemButton, ""},
          {'R', P::ItemKindList, "0"},
          {'T', P::ItemValueEdit, "9"},
          {'B', P::ItemActionListButton, ""},
          {'B', ozActionListDialog::InsertButton, ""},
          {'O', 0, ""},
          {'T', P::KeyEdit, ""},
          {'C', P::NoSortCheck, ""}},
         "PART \"Authentication\" type 6 key 2:Software\\Policies\\ozADM\\Network value name "
         "\"Method\" required no client ext \"{0E28E245-9368-4853-AD84-6DA3BA35BB75}\"\n"
         "  default 1 nosort yes\n"
         "  item \"Nothing\" value STRING \"n\"\n"
         "  item \"Remove the setting\" value DELETE\n"
         "  item \"Negotiate\" value STRING \"negotiate\"\n"
         "    actions 2\n"
         "      key 2:Software\\Policies\\ozADM\\Network\\Auth value name \"Kerberos\" value "
         "NUMERIC 1\n"
         "      key 2:Software\\Policies\\ozADM\\Network value name \"Spn\" value STRING \"HTTP\"\n"
         "  item \"New item\" value NUMERIC 9\n"
         "    actions 1\n"
         "      key 2:Software\\Policies\\ozADM\\Network\\Auth value name \"New Item\" value "
         "STRING \"\"\n"},
        {Hosts,
         "Hosts",
         {{'T', P::KeyEdit, ""}, {'C', P::ExplicitValueCheck, ""}, {'U', P::AdditiveCheck, ""}},
         "PART \"Hosts\" type 7 key 2:Software\\Policies\\ozADM\\Hosts value name \"\" required no "
         "client ext none\n"
         "  prefix none explicit yes additive no\n"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.part);
        PageSession session(test.policy, test.part);
        ASSERT_NE(session.part, nullptr);
        session.Run(test.steps);
        std::string name =
            test.steps.front().id == P::NameEdit ? test.steps.front().text : test.part;
        EXPECT_TRUE(session.platform.EndDialog(true)) << session.Message();
        EXPECT_EQ(session.edits, 1);
        EXPECT_EQ(session.Reloaded(name), test.expected);
    }
}

// Each refused field names itself, gets the focus, keeps the page open and changes nothing.
TEST(PartPagesTest, RefusedFieldsKeepThePageOpenAndThePartUnchanged)
{
    const struct {
        const char* policy;
        const char* part;
        std::vector<Step> steps;
        int focus;
        const char* message;
    } cases[] = {
        {Proxy, "Port", {{'T', P::NameEdit, ""}}, P::NameEdit, "200:Name||"},
        {Proxy,
         "Port",
         {{'T', P::KeyEdit, "Software\\\\Twice"}},
         P::KeyEdit,
         "202:Key|Software\\\\Twice|"},
        {Proxy, "Port", {{'T', P::KeyEdit, "\\Software"}}, P::KeyEdit, "202:Key|\\Software|"},
        {Proxy, "Port", {{'T', P::MinEdit, "x"}}, P::MinEdit, "201:Minimum||"},
        {Proxy, "Port", {{'T', P::MaxEdit, "4294967296"}}, P::MaxEdit, "201:Maximum||"},
        {Proxy, "Port", {{'T', P::SpinEdit, "-1"}}, P::SpinEdit, "201:Spin step||"},
        {Proxy,
         "Port",
         {{'T', P::MinEdit, "9"}, {'T', P::MaxEdit, "3"}},
         P::MinEdit,
         "203:Minimum|Maximum|"},
        {Proxy,
         "Port",
         {{'T', P::DefaultNumberEdit, "0"}},
         P::DefaultNumberEdit,
         "204:Default|Minimum|Maximum"},
        {Proxy,
         "Server name",
         {{'T', P::MaxLenEdit, "1e3"}},
         P::MaxLenEdit,
         "201:Maximum length||"},
        {Wallpaper,
         "Tile the picture",
         {{'R', P::OffKindList, "1"}, {'T', P::OffValueEdit, "no"}},
         P::OffValueEdit,
         "201:Value off||"},
        {Proxy,
         "Authentication",
         {{'R', P::ItemList, "2"}, {'T', P::ItemNameEdit, ""}},
         P::ItemNameEdit,
         "200:Item name (item 3)||"},
        {Proxy,
         "Authentication",
         {{'R', P::ItemList, "2"}, {'R', P::ItemKindList, "0"}, {'R', P::ItemList, "-1"}},
         P::ItemValueEdit,
         "201:Item value (item 3)||"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.message);
        PageSession session(test.policy, test.part);
        ASSERT_NE(session.part, nullptr);
        std::vector<std::string> before = session.Described();
        session.Run(test.steps);
        EXPECT_FALSE(session.platform.EndDialog(true));
        EXPECT_EQ(session.Message(), test.message);
        EXPECT_EQ(session.platform.TopForm()->Focused(), test.focus);
        EXPECT_EQ(session.Described(), before);
        EXPECT_EQ(session.edits, 0);
    }
}

TEST(PartPagesTest, CancelChangesNothing)
{
    PageSession session(Proxy, "Authentication");
    ASSERT_NE(session.part, nullptr);
    std::vector<std::string> before = session.Described();
    session.Run({{'T', P::NameEdit, "Other"},
                 {'R', P::ItemList, "0"},
                 {'T', P::ItemNameEdit, "Renamed"},
                 {'B', P::DownButton, ""},
                 {'B', P::ItemActionListButton, ""},
                 {'B', ozActionListDialog::InsertButton, ""},
                 {'O', 0, ""},
                 {'B', P::AddItemButton, ""}});
    EXPECT_TRUE(session.platform.EndDialog(false));
    EXPECT_EQ(session.platform.TopForm(), nullptr);
    EXPECT_EQ(session.Described(), before);
    EXPECT_EQ(session.edits, 0);
}

}  // namespace
