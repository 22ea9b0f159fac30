// What the grammar action tests share: token records built as the engine lays them out, and a
// fixture that starts every test with an empty load context and nothing reported, prepares the
// code generation for a small template written to the temporary folder, and builds policy trees
// through the actions as a grammar would call them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <string>

#include "core/adm/ozADMPolicy.h"
#include "engine/ozEBNF.h"
#include "loader/ozGrammarActions.h"
#include "loader/ozLoadContext.h"
#include "tests/support/ozRecordedEngineErrors.h"
#include "tests/support/ozTestFiles.h"

// A token record with its inline text (or number) and its source text in one allocation.
class TestToken {
public:
    static TestToken Word(const std::string& text) { return {EBNFTokenWord, text, text}; }
    static TestToken Quoted(const std::string& text)
    {
        return {EBNFTokenString, text, "\"" + text + "\""};
    }
    static TestToken Reference(const std::string& name)
    {
        return {EBNFTokenReference, name, "!!" + name};
    }
    static TestToken Number(uint32_t number)
    {
        TestToken token(EBNFTokenNumber, "", std::to_string(number));
        token.Record()->number = number;
        return token;
    }

    ozEBNFToken* Record() const { return reinterpret_cast<ozEBNFToken*>(m_storage.get()); }
    char* Text() const { return ozEBNFTokenText(Record()); }
    // The record as the action argument.
    operator intptr_t() const { return reinterpret_cast<intptr_t>(Record()); }

private:
    TestToken(uint32_t type, const std::string& text, const std::string& morph)
    {
        size_t textOffset = offsetof(ozEBNFToken, text);
        size_t recordSize = std::max(sizeof(ozEBNFToken), textOffset + text.size() + 1);
        m_storage = std::make_unique<std::byte[]>(recordSize + morph.size() + 1);
        char* morphCopy = reinterpret_cast<char*>(m_storage.get()) + recordSize;
        std::memcpy(morphCopy, morph.c_str(), morph.size() + 1);
        ozEBNFToken* record = new (m_storage.get()) ozEBNFToken{};
        record->type = type;
        record->morph = morphCopy;
        std::memcpy(Text(), text.c_str(), text.size() + 1);
    }

    std::unique_ptr<std::byte[]> m_storage;
};

class GrammarActionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        DestroyCode(0);
        ozResetRecordedErrors();
    }
    void TearDown() override
    {
        DestroyCode(0);
        std::filesystem::remove(m_template);
    }

    static ozLoadContext& Context() { return ozLoadContext::Instance(); }
    static ozADMTree& Tree() { return *Context().Tree(); }

    // Writes the template and prepares the code generation for it; true on success.
    bool Prepare(const std::string& contents = "CLASS MACHINE\r\n")
    {
        std::ofstream(m_template, std::ios::binary | std::ios::trunc) << contents;
        return PrepareCodeGeneration(reinterpret_cast<intptr_t>(m_template.c_str())) != 0;
    }

    // Runs an action that must succeed; a failure names the action and the number reported.
    static void Ok(intptr_t result, const std::string& what)
    {
        EXPECT_NE(result, 0) << what << " failed with " << ozRecordedErrorCode();
    }

    // The constructs of a template, each through the actions its grammar rule calls.
    static void Push(const std::string& text) { Ok(SaveString(TestToken::Quoted(text)), text); }
    static void Class(const std::string& name) { Ok(BeginClass(TestToken::Word(name)), name); }
    static void Category(const std::string& name)
    {
        Push(name);
        Ok(BeginCategory(0), "CATEGORY " + name);
    }
    static void Policy(const std::string& name)
    {
        Push(name);
        Ok(BeginPolicy(0), "POLICY " + name);
    }
    static void KeyName(const std::string& keyName)
    {
        Push(keyName);
        Ok(SetKeyname(0), "KEYNAME " + keyName);
    }
    static void Part(intptr_t (*create)(intptr_t), const std::string& name)
    {
        Push(name);
        Ok(create(0), "PART " + name);
    }

    // The current policy and its part at position (the last one for -1).
    static ozADMPolicy& CurrentPolicy() { return *static_cast<ozADMPolicy*>(Tree().GetCurr()); }
    template <class Part = ozADMCtrl>
    static Part& PartAt(int position = -1)
    {
        CCollection<ozADMCtrl>& parts = CurrentPolicy().Controls();
        return dynamic_cast<Part&>(*parts.At(position < 0 ? parts.Count() - 1 : position));
    }

    std::string m_template = ozTestFilePath("ozadm-grammar-action-test.adm");
};
