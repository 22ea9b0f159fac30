#include "ozADMWriterLines.h"

#include "core/registry/ozSubKey.h"
#include "ozADMActionList.h"
#include "ozADMTree.h"
#include "ozADMValue.h"

bool ozWriteLine(FILE* file, ozADMTree& tree, const char* text)
{
    return tree.WriteIndent(file) && std::fprintf(file, "%s\n", text) >= 0;
}

bool ozWritePlainLine(FILE* file, ozADMTree& tree, const char* keyword, const char* text)
{
    return tree.WriteIndent(file) && std::fprintf(file, "%s %s\n", keyword, text) >= 0;
}

bool ozWriteTextLine(FILE* file, ozADMTree& tree, const char* keyword, const char* text)
{
    return tree.WriteIndent(file) && std::fprintf(file, "%s ", keyword) >= 0 &&
           tree.WriteString(file, text) && std::fputc('\n', file) != EOF;
}

bool ozWriteNumberLine(FILE* file, ozADMTree& tree, const char* keyword, unsigned long number)
{
    return tree.WriteIndent(file) && std::fprintf(file, "%s %lu\n", keyword, number) >= 0;
}

bool ozWriteValueLine(FILE* file, ozADMTree& tree, const char* keyword, const ozADMValue& value)
{
    return tree.WriteIndent(file) && std::fprintf(file, "%s ", keyword) >= 0 &&
           value.SaveADM(file, tree) && std::fputc('\n', file) != EOF;
}

bool ozWriteKeyLine(FILE* file, ozADMTree& tree, ozSubKey* key)
{
    return key != nullptr && tree.WriteIndent(file) && std::fputs("KEYNAME ", file) != EOF &&
           key->SaveADM(file) && std::fputc('\n', file) != EOF;
}

bool ozBeginVersionBlock(FILE* file, ozADMTree& tree, int version)
{
    if (!tree.WriteIndent(file) || std::fprintf(file, "#if VERSION > %d\n", version) < 0)
        return false;
    tree.IndentInc();
    return true;
}

bool ozEndVersionBlock(FILE* file, ozADMTree& tree)
{
    tree.IndentDec();
    return ozWriteLine(file, tree, "#endif");
}

bool ozWriteClientExtBlock(FILE* file, ozADMTree& tree, const char* clientExt)
{
    if (clientExt == nullptr)
        return true;
    return ozBeginVersionBlock(file, tree, 2) &&
           ozWritePlainLine(file, tree, "CLIENTEXT", clientExt) && ozEndVersionBlock(file, tree);
}

bool ozWriteActionListBlock(FILE* file, ozADMTree& tree, const char* keyword, ozADMActionList* list,
                            ozSubKey* currentKey)
{
    if (list == nullptr)
        return true;
    return ozWriteLine(file, tree, keyword) && list->SaveADM(file, tree, currentKey) &&
           ozWritePlainLine(file, tree, "END", keyword);
}
