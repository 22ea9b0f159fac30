#include "ozRegProfileRun.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/registry/ozRegTree.h"
#include "tests/support/ozTestFiles.h"

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

std::vector<std::string> ozRegProfileRun::Describe()
{
    std::vector<std::string> lines = ozDescribeRegistry(m_code.tree->UsrTree());
    for (std::string& line : lines)
        line = "user " + line;
    for (const std::string& line : ozDescribeRegistry(m_code.tree->MacTree()))
        lines.push_back("machine " + line);
    return lines;
}
