// Finding the action functions a grammar names, by name, in the module that loaded the grammar
// (the module holding a given code address), and else among all the process's exports.
#pragma once

#include "ozEBNF.h"

class ozActionModule {
public:
    // The module that holds codeAddress.
    explicit ozActionModule(const void* codeAddress);
    ~ozActionModule();
    ozActionModule(const ozActionModule&) = delete;
    ozActionModule& operator=(const ozActionModule&) = delete;

    // The exported function of that name, or null.
    ozEBNFAction Find(const char* name) const;

private:
    void* m_module = nullptr;
};
