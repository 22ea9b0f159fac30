#include "ozRegProfileRun.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "platform/ozTextConversion.h"
#include "tests/support/ozTestFiles.h"

std::string ozRegNarrow(std::u16string_view text)
{
    std::basic_string<WCHAR> wide(text.begin(), text.end());
    return ozNarrowText(wide.data(), wide.size());
}

std::string ozRegCorpusFolder()
{
    std::string folder = ozPlatformPath(std::string(OZ_CORPUS_DIR) + "/reg");
    if (std::string(OZ_CORPUS_DIR).empty() || !std::filesystem::is_directory(folder))
        return {};
    return folder;
}

tPROFILELOAD ozRegProfileRun::Load(const std::string& userFile, const std::string& machineFile)
{
    ozProfileBinding binding(m_ui, ozTestMessageText);
    testing::internal::CaptureStderr();
    tPROFILELOAD loaded = binding.Load(&m_code, ozPlatformPath(OZ_REG_LIBRARY).c_str(),
                                       userFile.c_str(), machineFile.c_str());
    m_errors = testing::internal::GetCapturedStderr();
    return loaded;
}

bool ozRegProfileRun::Save(const std::string& userFile, const std::string& machineFile)
{
    ozProfileBinding binding(m_ui, ozTestMessageText);
    testing::internal::CaptureStderr();
    bool saved = binding.Save(&m_code, ozPlatformPath(OZ_REG_LIBRARY).c_str(), userFile.c_str(),
                              machineFile.c_str());
    m_errors = testing::internal::GetCapturedStderr();
    for (const ozRecordingHostUI::Message& message : m_ui.messages)
        m_errors += message.text + "\n";
    m_ui.messages.clear();
    return saved;
}

namespace {

struct Description {
    const char* tree;
    std::vector<std::string>* lines;
};

std::string Hex(const unsigned char* data, unsigned long size)
{
    std::string text;
    char byte[4];
    for (unsigned long at = 0; data != nullptr && at < size; ++at) {
        std::snprintf(byte, sizeof byte, "%02x", data[at]);
        text += byte;
    }
    return text;
}

void DescribeTree(const char* name, ozRegTree& tree, std::vector<std::string>& lines)
{
    Description description{name, &lines};
    tree.Execute(
        [](ozTreeNode* node, void* context) {
            auto* into = static_cast<Description*>(context);
            auto* key = static_cast<ozRegKey*>(node);
            if (key->Type() != KeySub)
                return true;
            auto* subKey = static_cast<ozSubKey*>(key);
            into->lines->push_back(std::string(into->tree) + " key " +
                                   std::to_string(subKey->Root()) + ":" + subKey->KeyPath() +
                                   " op=" + static_cast<char>(subKey->Op()));
            const CCollection<ozRegValue>& values = subKey->Values();
            for (int at = 0; at < values.Count(); ++at) {
                const ozRegValue* value = values.At(at);
                into->lines->push_back(std::string(into->tree) + "   value \"" +
                                       (value->Name() != nullptr ? value->Name() : "(null)") +
                                       "\" rit=" + static_cast<char>(value->RIT()) +
                                       " op=" + static_cast<char>(value->Op()) +
                                       " type=" + std::to_string(value->Type()) +
                                       " data=" + Hex(value->Data(), value->Size()));
            }
            return true;
        },
        &description);
}

}  // namespace

std::vector<std::string> ozRegProfileRun::Describe()
{
    std::vector<std::string> lines;
    DescribeTree("user", m_code.tree->UsrTree(), lines);
    DescribeTree("machine", m_code.tree->MacTree(), lines);
    return lines;
}
