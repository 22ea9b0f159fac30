// A numeric part: a REG_DWORD between Min and Max, or empty. A part marked Qword (the 64-bit
// numbers of XML templates) writes and reads a REG_QWORD instead; value, default, min and max
// are 64-bit for both, a 32-bit part keeping them within 32 bits is the loader's and the
// editors' business (a REG_DWORD takes the lower 32 bits).
#pragma once

#include <cstdint>

#include "ozADMCtrl.h"

class ozADMNumeric : public ozADMCtrl {
public:
    ozADMNumeric();
    ~ozADMNumeric() override;

    bool LeftEmpty() const override;
    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    bool SetDefault() override;
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    virtual void Value(std::uint64_t value);
    virtual std::uint64_t Value() const;
    virtual void Default(std::uint64_t value);
    virtual std::uint64_t Default() const;
    // No value entered: an empty part equal to its default writes nothing.
    virtual void Empty(bool empty);
    virtual bool Empty() const;
    virtual void DefaultEmpty(bool empty);
    virtual bool DefaultEmpty() const;
    virtual void Min(std::uint64_t min);
    virtual std::uint64_t Min() const;
    virtual void Max(std::uint64_t max);
    virtual std::uint64_t Max() const;
    virtual void Spin(long step);
    virtual long Spin() const;
    // Kept for the template text only: the registry value is always a REG_DWORD.
    virtual void TxtConvert(bool convert);
    virtual bool TxtConvert() const;
    // Writes and reads a REG_QWORD. The template language has no such number: its text is a
    // NUMERIC with the limits cut to 32 bits, reported to the tree as a conversion loss.
    virtual void Qword(bool qword);
    virtual bool Qword() const;

protected:
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;

private:
    std::uint64_t m_value = 0;
    std::uint64_t m_default = 0;
    bool m_empty = true;
    bool m_defaultEmpty = true;
    std::uint64_t m_min = 0;
    std::uint64_t m_max = 9999;
    long m_spin = 1;
    bool m_txtConvert = false;
    bool m_qword = false;
};
