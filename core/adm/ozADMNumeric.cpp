#include "ozADMNumeric.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

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
    // number it allows. Always a REG_DWORD, even where the template asks for text conversion,
    // unless the part is a 64-bit one.
    ozADMValue written;
    std::uint64_t number = !LeftEmpty() ? m_value : m_defaultEmpty ? m_min : m_default;
    if (m_qword)
        written.SetQword(number);
    else
        written.SetNumeric(static_cast<std::uint32_t>(number));
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
    // A 64-bit part is written as the nearest 32-bit one: its numbers cut to what a REG_DWORD
    // holds.
    if (m_qword)
        tree.ReportConversionLoss(std::string("the 64-bit number part ") + ConversionName() +
                                  " is written as a 32-bit NUMERIC (REG_DWORD)");
    auto written = [](std::uint64_t number) {
        return static_cast<unsigned long>(std::min<std::uint64_t>(number, UINT32_MAX));
    };
    if (!m_defaultEmpty && !ozWriteNumberLine(file, tree, "DEFAULT", written(m_default)))
        return false;
    if (!ozWriteNumberLine(file, tree, "MIN", written(m_min)) ||
        !ozWriteNumberLine(file, tree, "MAX", written(m_max)) ||
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
    if (!value->IsInsert() || value->Type() != (m_qword ? RegQword : RegDword))
        return NotAnInsert(*value);
    // A number read from outside may carry fewer bytes than its width; the missing ones count
    // as zero.
    std::uint32_t dword = 0;
    std::uint64_t qword = 0;
    void* number = m_qword ? static_cast<void*>(&qword) : &dword;
    std::size_t width = m_qword ? sizeof qword : sizeof dword;
    if (value->Data() != nullptr)
        std::memcpy(number, value->Data(), std::min<std::size_t>(value->Size(), width));
    m_value = m_qword ? qword : dword;
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
    copy->m_qword = m_qword;
    return copy;
}

ozADMCtrl* ozADMNumeric::New() const
{
    return new ozADMNumeric;
}

void ozADMNumeric::Value(std::uint64_t value)
{
    m_value = value;
}

std::uint64_t ozADMNumeric::Value() const
{
    return m_value;
}

void ozADMNumeric::Default(std::uint64_t value)
{
    m_default = value;
}

std::uint64_t ozADMNumeric::Default() const
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

void ozADMNumeric::Min(std::uint64_t min)
{
    m_min = min;
}

std::uint64_t ozADMNumeric::Min() const
{
    return m_min;
}

void ozADMNumeric::Max(std::uint64_t max)
{
    m_max = max;
}

std::uint64_t ozADMNumeric::Max() const
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

void ozADMNumeric::Qword(bool qword)
{
    m_qword = qword;
}

bool ozADMNumeric::Qword() const
{
    return m_qword;
}
