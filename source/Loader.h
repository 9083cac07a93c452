// Loader.h — the deck loader's state, shared by its three parts: the driver
// (DeckLoader.cpp: definitions in a canonical order, resolving, undo, keep),
// the DBD statements (DbdStatements.cpp, SegmentStatements.cpp) and the PSB
// statements (PsbStatements.cpp). Not installed: the loader's own header.
#pragma once

#include <krmwtarn/source/Cards.h>
#include <krmwtarn/source/DeckLoader.h>
#include <krmwtarn/source/Language.h>

#include <krmwtarn/model/framework/Navigation.h>

#include <krmwtarn/model/framework/Navigation.h>
#include <krmwtarn/platform/common/Refusals.h>

#include "Operands.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace krsource {

// The largest definitions the generation utilities accept (with the limits of
// DeckLoader.h). They also bound the model's work: each new link is checked
// against the links its source already has, so a definition without limits
// would cost time quadratic in its size.
inline constexpr int kMaxFields = 1000, kMaxReferences = 1000, kMaxDatasets = 2048;

std::string where(const Location& at);
// The text of a statement's keyword as the driver needs it before the
// statement is read (a definition's name): a one-element sublist is its element.
std::string operandText(const Statement& st, const char* keyword);

// One definition of a deck: the statements from its DBD to its DBDGEN, or
// from its first PCB to its PSBGEN, with its name for the canonical order.
struct Definition {
    Part part = Part::Dbd;
    std::string name;
    int file = 0;
    std::vector<const Statement*> statements;
    const Statement* end = nullptr;  // DBDGEN or PSBGEN; null when the deck ended first
};

// Handles by identity that remember what a load made, so it can be undone.
class Loader {
public:
    Loader(const char* version, Diagnostics& diags) : version_(version), diags_(diags) {}

    // Splits one deck into its definitions; statements outside any are told.
    void splitDeck(int file, const std::vector<Statement>& statements, std::vector<Definition>& out);
    void buildDbd(const Definition& dbd);
    void resolve(const std::vector<const Definition*>& psbs);
    void undo();
    // Hands the loaded definitions over, with the places of what was made
    // (the Locations point into `files`).
    void keep(LoadResult& result, const std::vector<std::string>& files);
    bool full() const noexcept { return diags_.full(); }

private:
    // ---- identities and undo ----
    // The object by identity; a new one is remembered as made (the registry
    // grows by it), and `existed` tells which it was.
    template <class H>
    H obtain(const std::string& id, bool* existed = nullptr) {
        std::size_t before = DSRegistrar::count();
        H h(version_.c_str(), id.c_str(), 1);
        bool made = DSRegistrar::count() > before;
        if (made) {
            made_.emplace_back(h.impl());
            places_.emplace_back(h.impl(), here_);
        }
        if (existed) *existed = !made;
        return h;
    }
    template <class L, class... A>
    L link(A&&... ends) {
        L l(std::forward<A>(ends)..., 1);
        madeLinks_.emplace_back(l.impl());
        return l;
    }
    template <class H>
    static H as(_ADObject* o) {
        return H(kr::cast<kr::ImplOf<H>>(o));
    }
    // Runs a step; a refusal by the model becomes an error at the statement.
    template <class Step>
    void guarded(const Location& at, Stmt stmt, Step&& step) {
        if (auto refused = kr::refusalOf(step))
            diags_.error(at, std::string(nameOf(stmt)) + ": the model refuses it: " + kr::explain(*refused));
    }

    // The logical relationship between a parent and a child segment: the
    // child's SEGM and the parent's LCHILD both describe it, so whichever is
    // read second finds the link the first made.
    DSLChild logicalRelationship(DSSegmentComplex& parent, DSSegmentComplex& child) {
        for (_DSLChild* l : kr::linksOf<DSLChild>(child->_get_logParent()))
            if (kr::endOf(l->_get_source()) == parent.operator->()) return DSLChild(l);
        return link<DSLChild>(&parent, &child);
    }

    // ---- lookups ----
    _ADObject* findDbd(const std::string& name) {
        return DSRegistrar::findObj("DSDBD", name.c_str(), version_.c_str());
    }
    _ADObject* findSegment(const std::string& dbd, const std::string& seg);
    _ADObject* findField(_ADObject* segment, const std::string& field);
    static std::string fieldId(_ADObject* segment, const std::string& field);
    _ADObject* accessOf(_ADObject* dbd);
    _ADObject* indexAccessOf(_ADObject* dbd);
    // A DBD, segment or field named by a statement's value; an error naming
    // the keyword when there is none.
    _ADObject* dbdNamed(Operands& ops, Kw k, const Value* v);
    _ADObject* segmentNamed(Operands& ops, Kw k, const Value* v, const std::string& dbd);
    _ADObject* fieldNamed(Operands& ops, Kw k, const Value* v, _ADObject* segment);

    // ---- faults told once ----
    // A definition or segment that failed (its statement broke the card rules
    // or was refused) is told once; what names it later stays quiet, since the
    // load fails all the same.
    bool failedDbd(const std::string& dbd) const { return failedDbds_.count(dbd) > 0; }
    bool failedSegment(const std::string& dbd, const std::string& seg) const {
        return failedDbd(dbd) || failedSegments_.count(dbd + "." + seg) > 0;
    }
    // A statement that broke the card rules: its group's members stay quiet.
    void brokenStatement(Stmt kind, const Statement& st);

    // ---- DBD statements ----
    void dbdStatement(const Statement& st);
    void datasetStatement(const Statement& st);
    void areaStatement(const Statement& st);
    void segmStatement(const Statement& st);
    void segmParent(Operands& ops, DSSegment& seg, const std::string& name, bool complex);
    void segmParts(Operands& ops, DSSegment& seg, bool logical);
    void fieldStatement(const Statement& st);
    void lchildStatement(const Statement& st);
    void xdfldStatement(const Statement& st);
    void closeSegment();
    void endDbd(const Definition& def);
    // The exits an EXIT= names; those made belong to `owner` (the DBD, or DBD.SEGMENT).
    void exitsOf(Operands& ops, Kw k, const std::string& owner, std::vector<DSExit>& out);
    void externalName(Operands& ops, Kw k, DSSegment* seg, DSField* field);

    // ---- PSB statements ----
    void buildPsb(const Definition& psb);

    std::string version_;
    Diagnostics& diags_;
    std::vector<ADObject> made_;
    std::vector<ADObject> madeLinks_;
    std::vector<std::function<void()>> deferred_;
    Location here_;  // the statement being read: where what obtain() makes comes from
    std::vector<std::pair<const _ADObject*, Location>> places_;
    std::unordered_map<std::string, _ADObject*> segments_;
    std::unordered_set<std::string> failedDbds_, failedSegments_;
    // The definitions made, with the statement that made each.
    std::vector<std::pair<Location, DSDBD>> loadedDbds_;
    std::vector<std::pair<Location, DSPSB>> loadedPsbs_;
    // The error count when the statement that opens the current group (SEGM,
    // PCB, SENSEG) began. When that statement failed, its members would only
    // repeat it with "no ... before it", so they are passed over in silence.
    static constexpr std::size_t kNoOpener = static_cast<std::size_t>(-1);
    std::size_t errorsAtOpener_ = kNoOpener;
    bool openerFailed() const noexcept { return errorsAtOpener_ != kNoOpener && diags_.errorCount() > errorsAtOpener_; }
    // Definitions of this load by name: where and as what text they were first given.
    std::unordered_map<std::string, std::pair<Location, std::string>> dbdTexts_, psbTexts_;

    // The DBD being read.
    struct DbdState {
        bool skip = false;      // already in the repository, given again, or failed at its DBD statement
        bool repeated = false;  // given earlier in this load
        std::string name;
        Location at;
        std::string kind;  // the organisation, upper case
        DSDBD dbd;
        ADObject access;
        ADObject segment;  // the last SEGM
        std::string segmentName;
        ADObject dataset;  // the last DATASET's dataset, for the segments that follow it
        bool logicalDataset = false;
        std::unordered_set<std::string> segmentNames;
        int fields = 0, references = 0, datasets = 0;  // counted against the limits
        ADObject rootSegment;
        // The last LCHILD that names an index DBD, until an XDFLD uses it.
        bool indexPending = false;
        bool indexUsed = false;
        std::string indexDbd;
        Location indexAt;
        bool symbolic = false;
        bool brokenLchild = false;  // the last LCHILD broke: its XDFLD stays quiet
    } d_;
};

}  // namespace krsource
