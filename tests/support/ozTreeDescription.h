// A policy tree or a registry tree as text, one line per element with every field: two trees
// are equal field by field when their descriptions are.
#pragma once

#include <string>
#include <vector>

class ozADMTree;
class ozRegTree;

std::vector<std::string> ozDescribeTree(ozADMTree& tree);
// A registry tree the same way: one line per key (root, path, operation, flags) and per value
// (name, type, item type, operation, both data in hexadecimal), in tree order.
std::vector<std::string> ozDescribeRegistry(ozRegTree& tree);

// "" when the descriptions agree; else the first line where they differ, with both versions.
std::string ozFirstDifference(const std::vector<std::string>& expected,
                              const std::vector<std::string>& actual);
