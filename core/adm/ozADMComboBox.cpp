#include "ozADMComboBox.h"

#include <cstring>
#include <memory>

#include "ozADMTree.h"
#include "ozADMWriterLines.h"

ozADMComboBox::ozADMComboBox() : ozADMEditText(CtrlComboBox) {}

ozADMComboBox::~ozADMComboBox() = default;

bool ozADMComboBox::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    if (!_SaveHeadADM(file, tree, policyKey, "COMBOBOX") || !_SaveEditSettingsADM(file, tree))
        return false;
    if (m_suggestions.Count() > 0) {
        if (!ozWriteLine(file, tree, "SUGGESTIONS"))
            return false;
        tree.IndentInc();
        for (int pos = 0; pos < m_suggestions.Count(); ++pos) {
            if (!tree.WriteIndent(file) || !tree.WriteString(file, m_suggestions.At(pos)) ||
                std::fputc('\n', file) == EOF)
                return false;
        }
        tree.IndentDec();
        if (!ozWriteLine(file, tree, "END SUGGESTIONS"))
            return false;
    }
    if (m_noSort && !(ozBeginVersionBlock(file, tree, 1) && ozWriteLine(file, tree, "NOSORT") &&
                      ozEndVersionBlock(file, tree)))
        return false;
    return _SaveClientExtADM(file, tree);
}

ozADMCtrl* ozADMComboBox::Copy() const
{
    auto* copy = new ozADMComboBox;
    copy->CopyEditTextFrom(*this);
    for (int pos = 0; pos < m_suggestions.Count(); ++pos)
        copy->AddSuggestion(m_suggestions.At(pos));
    copy->m_noSort = m_noSort;
    return copy;
}

ozADMCtrl* ozADMComboBox::New() const
{
    return new ozADMComboBox;
}

bool ozADMComboBox::AddSuggestion(const char* s)
{
    if (s == nullptr)
        return false;
    // A new[] string: the collection of char destroys its elements with delete[].
    size_t size = std::strlen(s) + 1;
    auto copy = std::make_unique<char[]>(size);
    std::memcpy(copy.get(), s, size);
    return m_suggestions.Add(copy.release());
}

const CCollection<char>& ozADMComboBox::Suggestions() const
{
    return m_suggestions;
}

void ozADMComboBox::ClearSuggestions()
{
    m_suggestions.RemoveAll();
}

void ozADMComboBox::NoSort(bool noSort)
{
    m_noSort = noSort;
}

bool ozADMComboBox::NoSort() const
{
    return m_noSort;
}
