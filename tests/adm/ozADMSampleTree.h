// The tree most template tests start from: MACHINE\Network settings\Policy, the policy with
// key Software\Pol and value Enabled (on 1, off 0). The tree owns every node.
#pragma once

#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRoot.h"
#include "core/adm/ozADMTree.h"

struct ozADMSampleTree {
    ozADMSampleTree()
    {
        root->Name("MACHINE");
        tree.AddBelow(root);
        category->Name("Network settings");
        tree.AddBelowAsLast(category);
        policy->Name("Policy");
        tree.AddBelowAsLast(policy);
        policy->RegKey("Software\\Pol");
        policy->Valuename("Enabled");
        policy->ValueOn().SetNumeric(1);
        policy->ValueOff().SetNumeric(0);
    }
    ozSubKey* Key(const char* path) { return tree.MacTree().FindKey(HKEY_LOCAL_MACHINE, path); }

    ozADMTree tree;
    ozADMRoot* root = new ozADMRoot(RootMachine);
    ozADMCategory* category = new ozADMCategory;
    ozADMPolicy* policy = new ozADMPolicy;
};
