// A predefined root key (HKEY_LOCAL_MACHINE and the others): a top-level node of a registry
// tree, below which the sub keys stand.
#pragma once

#include "ozRegKey.h"
#include "platform/ozRegistryTypes.h"

class ozRootKey : public ozRegKey {
public:
    ozRootKey() = default;
    explicit ozRootKey(HKEY root) : m_root(root) {}
    ~ozRootKey() override = default;

    tKEYTYPE Type() const override { return KeyRoot; }
    // The predefined key's handle; HKEY_CLASSES_ROOT by default.
    virtual void HKey(HKEY root) { m_root = root; }
    virtual HKEY HKey() const { return m_root; }

private:
    HKEY m_root = HKEY_CLASSES_ROOT;
};
