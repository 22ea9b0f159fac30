// The grammar engine: it reads a grammar file (see docs/grammar.md), then reads templates by
// that grammar and, as each rule fires, calls the action functions that the grammar names,
// exported by the module that loaded the grammar. It also keeps the last error and the host's
// numbered message texts that error messages are made of.
//
// One engine per process: the grammar, the code object it hands around and the last error are
// process-wide and unguarded; call it from one thread.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(_WIN32)
#if defined(OZ_EBNF_BUILDING)
#define OZ_EBNF_API __declspec(dllexport)
#else
#define OZ_EBNF_API __declspec(dllimport)
#endif
#else
#define OZ_EBNF_API __attribute__((visibility("default")))
#endif

// The token record an action receives (as its pointer-sized argument) for the token matched
// last. The inline part holds, for text tokens and string references, the token's text as a
// zero-terminated string (writable: an action may change it in place); for numbers, the value.
struct ozEBNFToken {
    uint32_t type;      // one of the tEBNFTOKENTYPE values
    const char* morph;  // the token as written in the template, zero-terminated
    union {
        uint32_t number;
        char text[4];  // the text continues past the record's end: read it with ozEBNFTokenText
    };
};

enum tEBNFTOKENTYPE : uint32_t {
    EBNFTokenWord = 1,       // a bare word
    EBNFTokenString = 2,     // a text in double quotes (without them)
    EBNFTokenNumber = 3,     // a number
    EBNFTokenReference = 9,  // !!name: the name without the exclamation marks
};

// The inline text of a text token or a string reference.
inline char* ozEBNFTokenText(ozEBNFToken* token)
{
    return reinterpret_cast<char*>(token) + offsetof(ozEBNFToken, text);
}

// An action: called with a token record or, for the actions that need none, with anything;
// returns nonzero for success. On failure it sets an error number with error_set_code (and
// may describe it with error_set_desc first).
typedef intptr_t (*ozEBNFAction)(intptr_t argument);

// Error numbers of the engine itself (the actions use their own, from 1007 up; running out of
// memory is 1007 for both).
enum tEBNFERROR : int {
    EBNFErrorCannotRead = 1001,     // a grammar or template file cannot be opened or read
    EBNFErrorGrammar = 1002,        // the grammar file is malformed
    EBNFErrorUnknownAction = 1003,  // the grammar names an action nobody exports
    EBNFErrorSyntax = 1004,         // the template does not follow the grammar
    EBNFErrorPreprocessor = 1005,   // a malformed or unbalanced #if / #else / #endif
    EBNFErrorNoGrammar = 1006,      // a template is read before a grammar was loaded
    EBNFErrorOutOfMemory = 1007,    // memory ran out reading the grammar or a template
    EBNFErrorLoadRunning = 1008,    // EBNFLoad or FileLoad while a template is being read
    EBNFErrorActionFailed = 0,      // an action failed without giving a number
};

extern "C" {

// Reads the grammar file and resolves every action it names (and the four the engine calls
// itself: SetCodeH, PrepareCodeGeneration, GetCodeH, DestroyCode) from the module that calls
// this function, else from the process. Replaces the grammar loaded before only on success.
// Nonzero on success; on failure ErrorMessage() names the file, line and column, or the
// missing action. Refused (1008) while a template is being read.
OZ_EBNF_API int EBNFLoad(const char* grammarFile);

// Reads a template by the grammar, calling its actions in document order: SetCodeH with the
// code object set through EBNFSetCodeHandle (if any), PrepareCodeGeneration with the file
// name, the grammar's actions, and GetCodeH at the end however the load ends (out of memory
// included), whose result EBNFGetCodeHandle then returns: a code object lent comes back.
// `mode` is accepted for compatibility and not used. Returns 1 on success; 0 when the file
// cannot be read, does not follow the grammar, an action fails, memory runs out (1007) or a
// template is being read already (1008, from an action), ErrorMessage() then telling what and
// where.
OZ_EBNF_API int FileLoad(const char* templateFile, int mode);

// The code object the last FileLoad produced (or the one set last), or null.
OZ_EBNF_API void* EBNFGetCodeHandle();
// Sets the code object the next FileLoad or EBNFDestroyCode hands to the module.
OZ_EBNF_API void EBNFSetCodeHandle(void* code);
// Hands the code object to the module's SetCodeH and has its DestroyCode destroy it and the
// load context; the engine forgets the code object.
OZ_EBNF_API void EBNFDestroyCode();
// Destroys the code object the engine holds (as EBNFDestroyCode) and releases the grammar.
OZ_EBNF_API void EBNFDestroy();

// The text of the last error: "FILE:LINE:COLUMN: error N: TEXT: DESCRIPTION", the position
// and the description only where known, TEXT being the host's text for N from the string
// list. Empty when nothing failed. Valid until the next engine call.
OZ_EBNF_API const char* ErrorMessage();

// Sets the number of the error being reported.
OZ_EBNF_API void error_set_code(int code);
// Sets the description of the error being reported (copied; null clears it).
OZ_EBNF_API void error_set_desc(const char* description);
// For templates read without the grammar (ADMX definitions, which are XML): forgets the last
// error, as FileLoad does before it reads.
OZ_EBNF_API void error_clear();
// For templates read without the grammar: makes the error set with error_set_code and
// error_set_desc the reason the load failed, at line and column (1-based; 0 unknown) of file,
// so that ErrorMessage() tells it as it tells a failed FileLoad.
OZ_EBNF_API void error_set_place(const char* file, unsigned line, unsigned column);
// The string list whose texts error messages use (not owned; null for none).
OZ_EBNF_API void error_set_string_list(void* list);

// A list of numbered texts. Create returns null when memory runs out.
OZ_EBNF_API void* stringlist_create();
// Files a copy of text under code, replacing an earlier one. Nonzero on success.
OZ_EBNF_API int stringlist_add(void* list, unsigned short code, const char* text);
// The text under code; the empty string for a number without text or a null list.
OZ_EBNF_API const char* stringlist_get(void* list, unsigned short code);
OZ_EBNF_API void stringlist_destroy(void* list);
}
