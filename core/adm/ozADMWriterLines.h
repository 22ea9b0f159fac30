// The line shapes the template writer is built from. Every line starts with the tree's
// indentation (ozADMTree::WriteIndent) and ends with a line feed; each function returns false
// at the first failed write, with the output written so far left in the stream.
#pragma once

#include <cstdio>

class ozADMActionList;
class ozADMTree;
class ozADMValue;
class ozSubKey;

// `text` as it is.
bool ozWriteLine(FILE* file, ozADMTree& tree, const char* text);
// `keyword text`, the text as it is (client extensions).
bool ozWritePlainLine(FILE* file, ozADMTree& tree, const char* keyword, const char* text);
// `keyword !!stringN`: the text as a string reference (ozADMTree::WriteString).
bool ozWriteTextLine(FILE* file, ozADMTree& tree, const char* keyword, const char* text);
// `keyword n`.
bool ozWriteNumberLine(FILE* file, ozADMTree& tree, const char* keyword, unsigned long number);
// `keyword value`: DELETE, NUMERIC n or a string reference. False for an empty value.
bool ozWriteValueLine(FILE* file, ozADMTree& tree, const char* keyword, const ozADMValue& value);
// `KEYNAME "path"`. False for a null key or a path too long to write.
bool ozWriteKeyLine(FILE* file, ozADMTree& tree, ozSubKey* key);

// `#if VERSION > version`, then one level deeper until ozEndVersionBlock writes `#endif` at the
// opening line's indentation.
bool ozBeginVersionBlock(FILE* file, ozADMTree& tree, int version);
bool ozEndVersionBlock(FILE* file, ozADMTree& tree);
// A client extension as `CLIENTEXT text` inside a `#if VERSION > 2` block; nothing (true) for
// null.
bool ozWriteClientExtBlock(FILE* file, ozADMTree& tree, const char* clientExt);

// `keyword`, the list's items one level deeper, `END keyword`; nothing (true) for a null list.
// currentKey is the key the list's items inherit when read back.
bool ozWriteActionListBlock(FILE* file, ozADMTree& tree, const char* keyword, ozADMActionList* list,
                            ozSubKey* currentKey);
