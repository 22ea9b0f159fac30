#include "ozADMMultiText.h"

#include <cstring>

#include "core/registry/ozRegValue.h"
#include "ozADMTree.h"
#include "ozADMValue.h"
#include "ozADMWriterLines.h"

ozADMMultiText::ozADMMultiText() : ozADMCtrl(CtrlMultiText) {}

ozADMMultiText::~ozADMMultiText() = default;

bool ozADMMultiText::_AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    ozADMValue written;
    written.SetMultiString(m_lines);
    return AddOwnWrite(writes, enabled, written);
}

bool ozADMMultiText::LeftEmpty() const
{
    return m_lines.empty();
}

bool ozADMMultiText::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    tree.ReportConversionLoss(std::string("the multi-line text ") + ConversionName() +
                              " is written as a one-line EDITTEXT (REG_SZ, not REG_MULTI_SZ)");
    return _SaveHeadADM(file, tree, policyKey, "EDITTEXT") &&
           _SaveValueNameADM(file, tree, /*withRequired=*/true) &&
           (m_maxLength == 0 || ozWriteNumberLine(file, tree, "MAXLEN", m_maxLength)) &&
           _SaveClientExtADM(file, tree);
}

bool ozADMMultiText::SetDefault()
{
    m_lines.clear();
    return true;
}

tSYNCSTATE ozADMMultiText::Sync()
{
    tSYNCSTATE early = SyncNeutral;
    ozRegValue* value = SyncOwnValue(&early);
    if (value == nullptr)
        return early;
    if (!value->IsInsert())
        return NotAnInsert(*value);
    if (value->Type() != RegMultiSz)
        return SyncConflict;
    m_lines = value->MultiStringLines();
    return SyncEnabled;
}

ozADMCtrl* ozADMMultiText::Copy() const
{
    auto* copy = new ozADMMultiText;
    copy->CopyBaseFrom(*this);
    copy->m_lines = m_lines;
    copy->m_maxLength = m_maxLength;
    copy->m_maxStrings = m_maxStrings;
    return copy;
}

ozADMCtrl* ozADMMultiText::New() const
{
    return new ozADMMultiText;
}

void ozADMMultiText::Lines(const std::vector<std::string>& lines)
{
    m_lines.clear();
    for (const std::string& line : lines)
        if (!line.empty())
            m_lines.push_back(line);
}

const std::vector<std::string>& ozADMMultiText::Lines() const
{
    return m_lines;
}

void ozADMMultiText::Text(const char* text)
{
    std::vector<std::string> lines;
    for (const char* at = text; at != nullptr && *at != '\0';) {
        std::size_t length = std::strcspn(at, "\r\n");
        lines.emplace_back(at, length);
        at += length;
        if (*at == '\r')
            ++at;
        if (*at == '\n')
            ++at;
    }
    Lines(lines);
}

std::string ozADMMultiText::Text() const
{
    std::string text;
    for (const std::string& line : m_lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

void ozADMMultiText::MaxLength(unsigned long length)
{
    m_maxLength = length;
}

unsigned long ozADMMultiText::MaxLength() const
{
    return m_maxLength;
}

void ozADMMultiText::MaxStrings(unsigned long count)
{
    m_maxStrings = count;
}

unsigned long ozADMMultiText::MaxStrings() const
{
    return m_maxStrings;
}
