// A loaded policy template: class roots, categories and policies, with the user and machine
// registry trees its policies read and write, and the [strings] list of the template writer.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "core/registry/ozRegTree.h"
#include "core/tree/CCollection.h"
#include "core/tree/ozTree.h"
#include "ozADMStringEntry.h"

class ozADMNode;
class ozADMPolicy;

class ozADMTree : public ozTree {
public:
    ozADMTree() = default;
    ~ozADMTree() override;

    virtual ozRegTree& UsrTree();
    virtual ozRegTree& MacTree();
    // Every node writes its state into its registry tree, in tree order; false when any
    // failed (the walk still visits every node).
    virtual bool SaveToRegistry();
    // Every node derives its state from its registry tree, in tree order; false when any
    // policy could not be evaluated (the walk still visits every node).
    virtual bool Sync();
    // Every node resets itself to its defaults (policies have none). True.
    virtual bool SetDefaultValues();

    // Writes the tree as a template: the class roots, categories and policies in tree order,
    // every text as a string reference, then the [strings] section with those texts. Numbering
    // and indentation start anew with each call. False at the first failed write, at a policy
    // without key, or when the stream cannot be flushed; the [strings] section is then not
    // written, and what was written stays in the stream.
    bool Save(FILE* file) override;
    // What the last Save could not express in the template language, one line per loss in
    // writing order: "policy path: what was written instead, or left out". A save with losses
    // still succeeds, and its template loads again.
    const std::vector<std::string>& ConversionLosses() const;
    // Records a loss for the policy being written (see WritingPolicy).
    void ReportConversionLoss(const std::string& what);
    // The policy whose text is being written (its path), named in the losses reported until
    // the next call (copied; null for none).
    void WritingPolicy(const char* path);
    // Writes "" for a null or empty text; otherwise the next reference !!stringN, remembering
    // the text for the [strings] section. Every call takes a new number, even for a text
    // written before. False for a null stream or a failed write.
    virtual bool WriteString(FILE* file, const char* text);
    // Writes the [strings] section of the texts referenced so far: nothing (true) when there
    // are none; else a blank line, "[strings]", a blank line and one line `stringN="text"` per
    // text in order, the text as it is (quotes in it are not escaped). False for a failed write.
    virtual bool SaveStringList(FILE* file);
    // The writer's indentation: 4 spaces more; 4 less, where less than 5 becomes 0.
    virtual void IndentInc();
    virtual void IndentDec();
    // Writes as many spaces as the indentation; false for a null stream or a failed write.
    virtual bool WriteIndent(FILE* file);
    // Appends every configured (enabled or disabled) policy in tree order. Pass a collection
    // that does not own its elements: the policies stay the tree's.
    virtual bool GetPolicies(CCollection<ozADMPolicy>& policies) const;
    // The node at path from the class roots down (see ozADMNode::FindNode).
    virtual ozADMNode* FindNode(const char* path);
    // As ozTree::GetUp, through the parent the current node remembers: climbing out of each of
    // many siblings in turn costs constant time instead of a walk back to the first one.
    ozTreeNode* GetUp() override;

private:
    ozRegTree m_userTree;
    ozRegTree m_machineTree;
    CCollection<ozADMStringEntry> m_strings{true};
    unsigned long m_stringCounter = 0;
    unsigned long m_indentation = 0;
    std::vector<std::string> m_conversionLosses;
    std::string m_writingPolicy;
};
