// A policy tree as text, one line per node, part, list item and action, with every setting a
// template can give: two trees are equal field by field when their descriptions are.
#pragma once

#include <string>
#include <vector>

class ozADMTree;

std::vector<std::string> ozDescribeTree(ozADMTree& tree);

// "" when the descriptions agree; else the first line where they differ, with both versions.
std::string ozFirstDifference(const std::vector<std::string>& expected,
                              const std::vector<std::string>& actual);
