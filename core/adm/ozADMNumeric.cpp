#include "ozADMNumeric.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozADMTree.h"
#include "ozADMValue.h"
#include "ozADMWriterLines.h"

ozADMNumeric::ozADMNumeric() : ozADMCtrl(CtrlNumeric) {}

ozADMNumeric::~ozADMNumeric() = default;

bool ozADMNumeric::_AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    // An empty part writes the number it would show: the template's default, else the lowest
    // number it allows. Always a REG_DWORD, even where the template asks for text conversion.
    ozADMValue written;
    written.SetNumeric(!LeftEmpty() ? m_value : m_defaultEmpty ? m_min : m_default);
    return AddOwnWrite(writes, enabled, written);
}

bool ozADMNumeric::LeftEmpty() const
{
    return m_empty;
}

bool ozADMNumeric::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    if (!_SaveHeadADM(file, tree, policyKey, "NUMERIC") ||
        !_SaveValueNameADM(file, tree, /*withRequired=*/true))
        return false;
    if (!m_defaultEmpty && !ozWriteNumberLine(file, tree, "DEFAULT", m_default))
        return false;
    if (!ozWriteNumberLine(file, tree, "MIN", m_min) ||
        !ozWriteNumberLine(file, tree, "MAX", m_max) ||
        !ozWriteNumberLine(file, tree, "SPIN", static_cast<unsigned long>(m_spin)))
        return false;
    // Without a line feed: what follows continues on the same line, which reads back alike
    // because keywords are separated by any white space.
    if (m_txtConvert && !(tree.WriteIndent(file) && std::fputs("TXTCONVERT", file) != EOF))
        return false;
    return _SaveClientExtADM(file, tree);
}

bool ozADMNumeric::SetDefault()
{
    m_value = m_default;
    m_empty = m_defaultEmpty;
    return true;
}

tSYNCSTATE ozADMNumeric::Sync()
{
    tSYNCSTATE early = SyncNeutral;
    ozRegValue* value = SyncOwnValue(&early);
    if (value == nullptr)
        return early;
    if (!value->IsInsert() || value->Type() != RegDword)
        return NotAnInsert(*value);
    // A REG_DWORD read from outside may carry fewer than four bytes; the missing ones count
    // as zero.
    std::uint32_t number = 0;
    if (value->Data() != nullptr)
        std::memcpy(&number, value->Data(), std::min<unsigned long>(value->Size(), sizeof number));
    m_value = number;
    m_empty = false;
    return SyncEnabled;
}

ozADMCtrl* ozADMNumeric::Copy() const
{
    auto* copy = new ozADMNumeric;
    copy->CopyBaseFrom(*this);
    copy->m_value = m_value;
    copy->m_default = m_default;
    copy->m_empty = m_empty;
    copy->m_defaultEmpty = m_defaultEmpty;
    copy->m_min = m_min;
    copy->m_max = m_max;
    copy->m_spin = m_spin;
    copy->m_txtConvert = m_txtConvert;
    return copy;
}

ozADMCtrl* ozADMNumeric::New() const
{
    return new ozADMNumeric;
}

void ozADMNumeric::Value(unsigned long value)
{
    m_value = value;
}

unsigned long ozADMNumeric::Value() const
{
    return m_value;
}

void ozADMNumeric::Default(unsigned long value)
{
    m_default = value;
}

unsigned long ozADMNumeric::Default() const
{
    return m_default;
}

void ozADMNumeric::Empty(bool empty)
{
    m_empty = empty;
}

bool ozADMNumeric::Empty() const
{
    return m_empty;
}

void ozADMNumeric::DefaultEmpty(bool empty)
{
    m_defaultEmpty = empty;
}

bool ozADMNumeric::DefaultEmpty() const
{
    return m_defaultEmpty;
}

void ozADMNumeric::Min(unsigned long min)
{
    m_min = min;
}

unsigned long ozADMNumeric::Min() const
{
    return m_min;
}

void ozADMNumeric::Max(unsigned long max)
{
    m_max = max;
}

unsigned long ozADMNumeric::Max() const
{
    return m_max;
}

void ozADMNumeric::Spin(long step)
{
    m_spin = step;
}

long ozADMNumeric::Spin() const
{
    return m_spin;
}

void ozADMNumeric::TxtConvert(bool convert)
{
    m_txtConvert = convert;
}

bool ozADMNumeric::TxtConvert() const
{
    return m_txtConvert;
}
