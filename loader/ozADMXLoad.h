// Loading ADMX policy definitions with their ADML language resources into the code object the
// engine hands around, the counterpart of the engine's FileLoad for ADM templates: the
// definitions are XML, read without the grammar, and build the tree through the same grammar
// actions, so that they merge with ADM templates loaded before or after and fail alike.
//
// The language resources of "folder/name.admx" are "folder/LANG/name.adml", LANG being the
// template language (ozTemplateLanguage), and else en-US. A category of another namespace
// (a "prefix:name" reference through the document's <using> declarations) is taken from the
// definitions of that namespace already loaded into the code object, or else from the .admx
// file beside this one that declares it as its target, which is then loaded first. docs/admx.md
// tells how every construct becomes part of the tree.
#pragma once

#include <string>

// Error numbers of the ADMX reader (the grammar actions it calls report their own).
enum tADMXERROR : int {
    ADMXErrorXml = 1140,               // a document is not well-formed XML or cannot be read
    ADMXErrorNoLanguageFile = 1141,    // no ADML file for the definitions
    ADMXErrorNoString = 1142,          // the ADML has no string of the id referred to
    ADMXErrorNoPresentation = 1143,    // the ADML has no presentation of the id referred to
    ADMXErrorUnknownPrefix = 1144,     // a namespace prefix that the document does not declare
    ADMXErrorMissingReference = 1145,  // a category, element or namespace referred to is missing
    ADMXErrorMissingAttribute = 1146,  // an element lacks an attribute or child it needs
    ADMXErrorBadValue = 1147,          // an attribute or value that cannot be what it says
};

// Whether file names ADMX definitions: its name ends in ".admx", in any case.
bool ozIsADMXFile(const char* file);

// Loads the ADMX definitions in file, as FileLoad loads an ADM template: into the code object
// set with EBNFSetCodeHandle (a new one without), which EBNFGetCodeHandle returns afterwards
// however the load ends, with what was merged before a failure. Returns 1 on success; 0 on
// failure, ErrorMessage() then naming the file, line and column and what is wrong or missing.
// Never throws.
int ozADMXFileLoad(const char* file);

// The language whose resources later loads look for first: a tag such as "de-DE". Empty (or
// null) means the user's interface language.
void ozTemplateLanguage(const char* language);
// The language set, or else the user's interface language; empty when neither is known.
std::string ozTemplateLanguage();
