// The policy tree and the registry trees of a code object as lines for people and for script
// output (docs/cli.md), two blanks of indentation per depth.
//
// Policy tree:  CLASS name / CATEGORY name / POLICY name = enabled|disabled|notconfigured,
//               and with parts, below each policy: PART name TYPE = "value" (TEXT parts
//               without "= value").
// Registry trees: USER and MACHINE at depth 0; below each its root keys by name
//               (HKEY_CURRENT_USER ...); below those the keys (KEY name, followed by
//               [erase values] for a key whose values are all to be erased) with their values
//               first, then their sub keys. A value reads VALUE "name" OP TYPE "data", OP being
//               the operation letter (I insert, D delete, C change, A append, L, R) and data its
//               text form; operations with a second datum add it quoted, and an item type
//               other than r adds item=X.
#pragma once

#include <string>
#include <vector>

#include "platform/ozRegistryTypes.h"

struct tTreeCodeHandle;

std::vector<std::string> ozPolicyTreeLines(tTreeCodeHandle* code, bool withParts);
std::vector<std::string> ozRegistryTreeLines(tTreeCodeHandle* code);

// HKEY_CLASSES_ROOT ... HKEY_DYN_DATA by root number, "ROOT<n>" for any other.
std::string ozRootName(unsigned int rootNumber);
// REG_SZ, REG_DWORD ... by registry data type, "TYPE<n>" for any other.
std::string ozRegTypeName(unsigned long type);
