#include "ozADMCategory.h"

#include "ozADMTree.h"
#include "ozADMWriterLines.h"

bool ozADMCategory::SaveNode(FILE* file)
{
    ozADMTree* tree = ADMTree();
    if (tree == nullptr || !ozWriteTextLine(file, *tree, "CATEGORY", Name()))
        return false;
    tree->IndentInc();
    return true;
}

bool ozADMCategory::SaveNodeAfter(FILE* file)
{
    ozADMTree* tree = ADMTree();
    // The closing line stands at the indentation of the contents, not of the opening line.
    if (tree == nullptr || !ozWriteLine(file, *tree, "END CATEGORY"))
        return false;
    tree->IndentDec();
    return true;
}
