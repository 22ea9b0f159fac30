// The engine's functions: one grammar and one code object per process.
#include "ozEBNF.h"

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "ozActionModule.h"
#include "ozEngineErrors.h"
#include "ozGrammar.h"
#include "ozGrammarReader.h"
#include "ozTemplateLexer.h"
#include "ozTemplateParser.h"
#include "ozTemplateText.h"

namespace {

// The functions the engine itself calls in the module, besides the grammar's actions.
struct ModuleFunctions {
    ozEBNFAction setCode = nullptr;
    ozEBNFAction prepare = nullptr;
    ozEBNFAction getCode = nullptr;
    ozEBNFAction destroyCode = nullptr;
};

struct Engine {
    std::unique_ptr<ozGrammar> grammar;
    std::vector<ozEBNFAction> actions;
    ModuleFunctions module;
    void* code = nullptr;
    bool loading = false;
};

Engine& TheEngine()
{
    static Engine engine;
    return engine;
}

ozEngineError& Error()
{
    return ozEngineError::Instance();
}

// Where the grammar first calls action.
ozErrorPlace PlaceOfAction(const ozGrammar& grammar, uint32_t action, const char* file)
{
    ozErrorPlace place;
    place.file = file;
    for (const ozGrammarNode& node : grammar.nodes)
        if (node.kind == ozGrammarNode::Action && node.target == action) {
            place.line = node.line;
            place.column = node.column;
            break;
        }
    return place;
}

bool LoadGrammar(const char* file, const void* caller)
{
    std::string text;
    if (ozStatus read = ozReadTemplateText(file, text); !read) {
        Error().Fail(EBNFErrorCannotRead, read.Message(), {file, 0, 0});
        return false;
    }
    auto grammar = std::make_unique<ozGrammar>();
    if (ozStatus grammarRead = ozReadGrammar(text, *grammar); !grammarRead) {
        Error().Fail(EBNFErrorGrammar, grammarRead.Message(),
                     {file, grammarRead.Line(), grammarRead.Column()});
        return false;
    }
    ozActionModule module(caller);
    std::vector<ozEBNFAction> actions;
    for (uint32_t i = 0; i < grammar->actions.size(); ++i) {
        ozEBNFAction action = module.Find(grammar->actions[i].c_str());
        if (action == nullptr) {
            Error().Fail(EBNFErrorUnknownAction,
                         "the grammar names the action \"" + grammar->actions[i] +
                             "\", which no module exports",
                         PlaceOfAction(*grammar, i, file));
            return false;
        }
        actions.push_back(action);
    }
    ModuleFunctions functions;
    struct Required {
        const char* name;
        ozEBNFAction* function;
    } required[] = {{"SetCodeH", &functions.setCode},
                    {"PrepareCodeGeneration", &functions.prepare},
                    {"GetCodeH", &functions.getCode},
                    {"DestroyCode", &functions.destroyCode}};
    for (const Required& each : required) {
        *each.function = module.Find(each.name);
        if (*each.function == nullptr) {
            Error().Fail(EBNFErrorUnknownAction,
                         std::string("the engine needs the action \"") + each.name +
                             "\", which no module exports",
                         {file, 0, 0});
            return false;
        }
    }
    Engine& engine = TheEngine();
    engine.grammar = std::move(grammar);
    engine.actions = std::move(actions);
    engine.module = functions;
    return true;
}

bool LoadTemplate(const char* file)
{
    Engine& engine = TheEngine();
    if (!engine.grammar) {
        Error().Fail(EBNFErrorNoGrammar, "no grammar is loaded",
                     {file != nullptr ? file : "", 0, 0});
        return false;
    }
    if (file == nullptr) {
        Error().Fail(EBNFErrorCannotRead, "no template file named", {});
        return false;
    }
    const ModuleFunctions& module = engine.module;
    if (engine.code != nullptr)
        module.setCode(reinterpret_cast<intptr_t>(engine.code));
    engine.code = nullptr;
    // From here the module holds the code object: it is taken back however the load ends,
    // out of memory included, so that whoever lent it gets it back.
    struct TakeBack {
        Engine& engine;
        ~TakeBack() { engine.code = reinterpret_cast<void*>(engine.module.getCode(0)); }
    } takeBack{engine};

    Error().Code(0);
    Error().Description({});
    if (module.prepare(reinterpret_cast<intptr_t>(file)) == 0) {
        Error().Fail({file, 0, 0});
        return false;
    }
    std::string text;
    if (ozStatus read = ozReadTemplateText(file, text); !read) {
        Error().Fail(EBNFErrorCannotRead, read.Message(), {file, 0, 0});
        return false;
    }
    ozTemplateLexer lexer(text, *engine.grammar);
    ozTemplateParser parser(*engine.grammar, engine.actions, lexer);
    bool parsed = parser.Parse();
    if (!parsed)
        Error().Fail(parser.ErrorCode(), parser.ErrorDescription(),
                     ozPlaceInText(file, text, parser.ErrorOffset()));
    return parsed;
}

void DestroyCode()
{
    Engine& engine = TheEngine();
    if (engine.module.destroyCode == nullptr)
        return;
    if (engine.code != nullptr)
        engine.module.setCode(reinterpret_cast<intptr_t>(engine.code));
    engine.code = nullptr;
    engine.module.destroyCode(0);
}

}  // namespace

extern "C" {

// Not inlined: the return address names the module that loads the grammar.
__attribute__((noinline)) OZ_EBNF_API int EBNFLoad(const char* grammarFile)
{
    const void* caller = __builtin_return_address(0);
    Error().Clear();
    // A load reads by the grammar, which must not be replaced while it runs.
    if (TheEngine().loading) {
        Error().Fail(EBNFErrorLoadRunning, "a template is being read already", {});
        return 0;
    }
    if (grammarFile == nullptr) {
        Error().Fail(EBNFErrorCannotRead, "no grammar file named", {});
        return 0;
    }
    try {
        return LoadGrammar(grammarFile, caller) ? 1 : 0;
    } catch (const std::bad_alloc&) {
        Error().Fail(EBNFErrorOutOfMemory, "out of memory", {grammarFile, 0, 0});
        return 0;
    }
}

OZ_EBNF_API int FileLoad(const char* templateFile, int /*mode*/)
{
    Engine& engine = TheEngine();
    Error().Clear();
    if (engine.loading) {
        Error().Fail(EBNFErrorLoadRunning, "a template is being read already", {});
        return 0;
    }
    engine.loading = true;
    bool loaded = false;
    try {
        loaded = LoadTemplate(templateFile);
    } catch (const std::bad_alloc&) {
        Error().Fail(EBNFErrorOutOfMemory, "out of memory",
                     {templateFile ? templateFile : "", 0, 0});
    }
    engine.loading = false;
    return loaded ? 1 : 0;
}

OZ_EBNF_API void* EBNFGetCodeHandle()
{
    return TheEngine().code;
}

OZ_EBNF_API void EBNFSetCodeHandle(void* code)
{
    TheEngine().code = code;
}

OZ_EBNF_API void EBNFDestroyCode()
{
    DestroyCode();
}

OZ_EBNF_API void EBNFDestroy()
{
    DestroyCode();
    Engine& engine = TheEngine();
    engine.grammar.reset();
    engine.actions.clear();
    engine.module = {};
}

OZ_EBNF_API const char* ErrorMessage()
{
    try {
        return Error().Message();
    } catch (const std::bad_alloc&) {
        return "out of memory";
    }
}

OZ_EBNF_API void error_set_code(int code)
{
    Error().Code(code);
}

OZ_EBNF_API void error_set_desc(const char* description)
{
    Error().Description(description != nullptr ? description : "");
}

OZ_EBNF_API void error_clear()
{
    Error().Clear();
}

OZ_EBNF_API void error_set_place(const char* file, unsigned line, unsigned column)
{
    try {
        Error().Fail({file != nullptr ? file : "", line, column});
    } catch (const std::bad_alloc&) {
        Error().Fail({});
    }
}

OZ_EBNF_API void error_set_string_list(void* list)
{
    Error().Messages(static_cast<const ozMessageList*>(list));
}

OZ_EBNF_API void* stringlist_create()
{
    return new (std::nothrow) ozMessageList();
}

OZ_EBNF_API int stringlist_add(void* list, unsigned short code, const char* text)
{
    if (list == nullptr)
        return 0;
    try {
        static_cast<ozMessageList*>(list)->Add(code, text);
        return 1;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

OZ_EBNF_API const char* stringlist_get(void* list, unsigned short code)
{
    return list != nullptr ? static_cast<ozMessageList*>(list)->Get(code) : "";
}

OZ_EBNF_API void stringlist_destroy(void* list)
{
    ozMessageList* messages = static_cast<ozMessageList*>(list);
    if (messages != nullptr && ozEngineError::Instance().UsesMessages(messages))
        error_set_string_list(nullptr);
    delete messages;
}
}
