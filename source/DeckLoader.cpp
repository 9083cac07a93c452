// DeckLoader.cpp — the statements of DBD and PSB decks into the model. Pass one
// walks every deck's statements and makes each DBD's own objects (access,
// datasets and areas, segments with their physical parents, fields, exits,
// compression routines); what names something that may live in another deck is
// kept as a deferred step with its location. Pass two runs those steps (logical
// relationships, indexes, logical sources) and then builds the PSBs, whose PCBs
// name DBDs. Any error undoes everything the load made.
#include <krmwtarn/source/DeckLoader.h>

#include <krmwtarn/source/Cards.h>
#include <krmwtarn/source/FieldGeometry.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <string_view>
#include <unordered_set>

namespace krsource {

bool LoadResult::ok() const noexcept {
    for (const Diagnostic& d : diagnostics)
        if (d.severity == Severity::Error) return false;
    return true;
}

const Place* LoadResult::placeOf(const _ADObject* object) const {
    auto it = std::lower_bound(places.begin(), places.end(), object,
                               [](const auto& entry, const _ADObject* o) { return entry.first < o; });
    return it == places.end() || it->first != object ? nullptr : &it->second;
}

namespace {

std::string where(const Location& at) {
    return (at.file ? *at.file : std::string()) + ":" + std::to_string(at.line) + ":" + std::to_string(at.column);
}

// The operations a deck may hold, told apart once per statement: directives
// carry no definition; data conversion and mapping statements are part of the
// language but have no place in the model.
enum class Op {
    Dbd,
    Dbdgen,
    Dataset,
    Area,
    Segm,
    Field,
    Lchild,
    Xdfld,
    Pcb,
    Senseg,
    Senfld,
    Psbgen,
    Directive,
    Unmodelled,
    Unknown
};

Op opOf(std::string_view op) {
    static constexpr std::pair<std::string_view, Op> kOps[] = {
        {"DBD", Op::Dbd},           {"DBDGEN", Op::Dbdgen},   {"DATASET", Op::Dataset},     {"AREA", Op::Area},
        {"SEGM", Op::Segm},         {"FIELD", Op::Field},     {"LCHILD", Op::Lchild},       {"XDFLD", Op::Xdfld},
        {"PCB", Op::Pcb},           {"SENSEG", Op::Senseg},   {"SENFLD", Op::Senfld},       {"PSBGEN", Op::Psbgen},
        {"TITLE", Op::Directive},   {"PRINT", Op::Directive}, {"EJECT", Op::Directive},     {"SPACE", Op::Directive},
        {"FINISH", Op::Directive},  {"END", Op::Directive},   {"DFSMARSH", Op::Unmodelled}, {"DFSMAP", Op::Unmodelled},
        {"DFSCASE", Op::Unmodelled}};
    for (const auto& [name, kind] : kOps)
        if (name == op) return kind;
    return Op::Unknown;
}

// The largest definitions the generation utilities accept (with the limits of
// DeckLoader.h). They also bound the model's work: each new link is checked
// against the links its source already has, so a definition without limits
// would cost time quadratic in its size.
constexpr int kMaxFields = 1000, kMaxReferences = 1000, kMaxDatasets = 2048;

// The operands of one statement by keyword. Keywords the statement does not
// hold in the model, and positional operands where none is expected, are
// warnings; a keyword given twice is an error.
class Operands {
public:
    Operands(const Statement& st, std::initializer_list<const char*> accepted, Diagnostics& diags) {
        for (const char* k : accepted)
            if (count_ < kMaxKeywords) accepted_[count_++] = k;
        for (const Operand& op : st.operands) {
            if (op.keyword.empty()) {
                if (op.value.isEmpty()) continue;
                diags.warning(op.at, st.operation + ": positional operand '" + op.value.text +
                                         "' has no place in the model; ignored");
                continue;
            }
            std::size_t i = 0;
            while (i < count_ && std::strcmp(op.keyword.c_str(), accepted_[i]) != 0) ++i;
            if (i == count_) {
                diags.warning(op.at, st.operation + " " + op.keyword + ": keyword has no place in the model; ignored");
                continue;
            }
            if (given_[i])
                diags.error(op.at, st.operation + " " + op.keyword + ": given twice");
            else
                given_[i] = &op;
        }
    }
    // The operand given for one of the accepted keywords. The statements ask
    // with the same literals they accept, so the address usually decides.
    const Operand* operator[](const char* key) const {
        for (std::size_t i = 0; i < count_; ++i)
            if (accepted_[i] == key) return given_[i];
        for (std::size_t i = 0; i < count_; ++i)
            if (std::strcmp(accepted_[i], key) == 0) return given_[i];
        return nullptr;
    }

private:
    // A statement accepts a handful of keywords: fixed slots beat any map.
    static constexpr std::size_t kMaxKeywords = 16;
    const char* accepted_[kMaxKeywords] = {};
    const Operand* given_[kMaxKeywords] = {};
    std::size_t count_ = 0;
};

// Handles by identity that remember what a load made, so it can be undone.
class Loader {
public:
    Loader(const char* version, Diagnostics& diags) : version_(version), diags_(diags) {}

    void readDeck(const std::string& file, const std::vector<Statement>& statements);
    void resolve();
    void undo();
    // Hands the loaded definitions over, with the places of what was made
    // (the Locations point into `files`).
    void keep(LoadResult& result, const std::vector<std::string>& files);

private:
    // ---- identities and undo ----
    // The object of class `cls` by identity; a new one is remembered as made
    // (the registry grows by it), and `existed` tells which it was.
    template <class H>
    H obtain(const char*, const std::string& id, bool* existed = nullptr) {
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
        return H(static_cast<decltype(std::declval<H>().operator->())>(o));
    }

    // ---- values ----
    std::string text(const Operand* op, const Value* v) {
        if (!v || v->isEmpty()) return {};
        if (v->kind == Value::List) {
            diags_.error(v->at, op->keyword + ": a single value is expected, not a sublist");
            return {};
        }
        return v->text;
    }
    std::optional<long> number(const std::string& stmt, const Operand* op, const Value* v, long lo, long hi) {
        if (!v || v->isEmpty()) return std::nullopt;
        const std::string& t = v->text;
        bool digits = v->kind == Value::Word && !t.empty() && t.size() < 12;
        for (char c : t) digits = digits && c >= '0' && c <= '9';
        if (!digits) {
            diags_.error(v->at, stmt + " " + op->keyword + ": a number is expected, not '" + t + "'");
            return std::nullopt;
        }
        long n = std::stol(t);
        if (n < lo || n > hi) {
            diags_.error(v->at, stmt + " " + op->keyword + ": " + t + " is out of range (" + std::to_string(lo) +
                                    " to " + std::to_string(hi) + ")");
            return std::nullopt;
        }
        return n;
    }
    std::optional<int> yesNo(const std::string& stmt, const Operand* op) {
        if (!op) return std::nullopt;
        std::string t = text(op, &op->value);
        if (t == "YES" || t == "Y") return 1;
        if (t == "NO" || t == "N") return 0;
        diags_.error(op->value.at, stmt + " " + op->keyword + ": YES or NO is expected, not '" + t + "'");
        return std::nullopt;
    }
    bool require(const Statement& st, const Operand* op, const char* key) {
        if (op && !op->value.isEmpty()) return true;
        diags_.error(op ? op->at : st.at, st.operation + " " + key + ": required");
        return false;
    }
    // Runs a step; a refusal by the model becomes an error at the statement.
    template <class Step>
    void guarded(const Location& at, const char* stmt, Step&& step) {
        try {
            step();
        } catch (KVException* e) {
            diags_.error(at, std::string(stmt) + ": the model refuses it: " + e->message());
            delete e;
        }
    }

    // ---- lookups ----
    _ADObject* findDbd(const std::string& name) {
        return DSRegistrar::findObj("DSDBD", name.c_str(), version_.c_str());
    }
    _ADObject* findSegment(const std::string& dbd, const std::string& seg) {
        std::string id = dbd + "." + seg;
        if (auto it = segments_.find(id); it != segments_.end()) return it->second;
        for (const char* cls : {"DSSegmentComplex", "DSSegmentDEDB", "DSSegmentLogical", "DSSegment"})
            if (_ADObject* s = DSRegistrar::findObj(cls, id.c_str(), version_.c_str())) {
                // Segments live as long as the repository; PSBs look them up often.
                if (segments_.size() < 100000) segments_.emplace(std::move(id), s);
                return s;
            }
        return nullptr;
    }
    _ADObject* findField(_ADObject* segment, const std::string& field) {
        std::string id = std::string(static_cast<_DSSegment*>(segment)->_get_strSegmentName()) + "." + field + "@" +
                         segment->objID();
        return DSRegistrar::findObj("DSField", id.c_str(), version_.c_str());
    }
    _ADObject* accessOf(_ADObject* dbd) {
        DSDBDaccess* a = static_cast<_DSDBD*>(dbd)->_getFirst_dliAccess();
        return a ? a->impl() : nullptr;
    }
    // A DBD named by a statement: defined in this load or already in the repository.
    _ADObject* dbdNamed(const std::string& stmt, const Operand* op, const Value* v) {
        std::string name = text(op, v);
        _ADObject* d = name.empty() ? nullptr : findDbd(name);
        if (!d && !name.empty()) diags_.error(v->at, stmt + " " + op->keyword + ": no DBD named " + name);
        return d;
    }
    _ADObject* segmentNamed(const std::string& stmt, const Operand* op, const Value* v, const std::string& dbd) {
        std::string name = text(op, v);
        _ADObject* s = name.empty() ? nullptr : findSegment(dbd, name);
        if (!s && !name.empty())
            diags_.error(v->at, stmt + " " + op->keyword + ": no segment " + name + " in DBD " + dbd);
        return s;
    }
    _ADObject* fieldNamed(const std::string& stmt, const Operand* op, const Value* v, _ADObject* segment) {
        std::string name = text(op, v);
        _ADObject* f = name.empty() ? nullptr : findField(segment, name);
        if (!f && !name.empty())
            diags_.error(v->at, stmt + " " + op->keyword + ": no field " + name + " in segment " +
                                    static_cast<_DSSegment*>(segment)->_get_strSegmentName());
        return f;
    }

    // ---- DBD statements ----
    void dbdStatement(const Statement& st);
    void datasetStatement(const Statement& st, bool area);
    void segmStatement(const Statement& st);
    void fieldStatement(const Statement& st);
    void lchildStatement(const Statement& st);
    void xdfldStatement(const Statement& st);
    void closeSegment();
    void endDbd(const Location& at, bool byDbdgen);
    void exitsOf(const std::string& stmt, const Operand* op, std::vector<DSExit>& out);

    // ---- PSB statements ----
    struct PsbGroup {
        std::vector<const Statement*> statements;
        const Statement* psbgen = nullptr;
    };
    void buildPsb(const PsbGroup& group);

    std::string version_;
    Diagnostics& diags_;
    std::vector<ADObject> made_;
    std::vector<ADObject> madeLinks_;
    std::vector<std::function<void()>> deferred_;
    Location here_;  // the statement being read: where what obtain() makes comes from
    std::vector<std::pair<const _ADObject*, Location>> places_;
    std::unordered_map<std::string, _ADObject*> segments_;
    std::vector<PsbGroup> psbs_;
    std::vector<DSDBD> loadedDbds_;
    // The error count when the statement that opens the current group (SEGM,
    // PCB, SENSEG) began. When that statement failed, its members would only
    // repeat it with "no ... before it", so they are passed over in silence.
    static constexpr std::size_t kNoOpener = static_cast<std::size_t>(-1);
    std::size_t errorsAtOpener_ = kNoOpener;
    bool openerFailed() const noexcept { return errorsAtOpener_ != kNoOpener && diags_.errorCount() > errorsAtOpener_; }
    std::vector<DSPSB> loadedPsbs_;
    // Definitions of this load by name: where and as what text they were first given.
    std::unordered_map<std::string, std::pair<Location, std::string>> dbdTexts_, psbTexts_;

    // The DBD being read.
    struct DbdState {
        bool open = false;
        bool skip = false;      // a definition given again, or already in the repository
        bool repeated = false;  // given earlier in this load
        std::string name;
        Location at;
        std::string text;
        std::string kind;  // the organisation, upper case
        DSDBD dbd;
        ADObject access;
        ADObject segment;  // the last SEGM
        std::string segmentName;
        ADObject dataset;  // the last DATASET's dataset, for the segments that follow it
        std::unordered_set<std::string> segmentNames;
        int fields = 0, references = 0, datasets = 0;  // counted against the limits below
        ADObject rootSegment;
        // The last LCHILD that names an index DBD, until an XDFLD uses it.
        bool indexPending = false;
        bool indexUsed = false;
        std::string indexDbd;
        Location indexAt;
        bool symbolic = false;
    } d_;
};

// ---------------------------------------------------------------------------
// DBD

void Loader::dbdStatement(const Statement& st) {
    Operands ops(st, {"NAME", "ACCESS", "PASSWD", "VERSION", "RMNAME", "EXIT"}, diags_);
    d_ = DbdState();
    d_.open = true;
    d_.at = st.at;
    if (!require(st, ops["NAME"], "NAME")) {
        d_.skip = true;
        return;
    }
    d_.name = text(ops["NAME"], &ops["NAME"]->value);
    d_.text = st.operation + " " + st.source + "\n";
    auto first = dbdTexts_.find(d_.name);
    if (first != dbdTexts_.end()) {
        d_.skip = d_.repeated = true;
        return;
    }
    if (findDbd(d_.name)) {
        diags_.warning(st.at, "DBD " + d_.name + ": already in the repository in version " + version_ +
                                  "; the definition there is kept");
        d_.skip = true;
        return;
    }
    const Operand* access = ops["ACCESS"];
    std::string os;
    bool protect = false, dosComp = false;
    if (access) {
        d_.kind = text(access, access->value.item(0));
        for (std::size_t i = 1; i < access->value.size(); ++i) {
            std::string w = text(access, access->value.item(i));
            if (w == "VSAM" || w == "OSAM" || w == "BSAM")
                os = w;
            else if (w == "PROT")
                protect = true;
            else if (w == "NPROT")
                protect = false;
            else if (w == "DOSCOMP")
                dosComp = true;
            else if (!w.empty())
                diags_.warning(access->value.item(i)->at, "DBD ACCESS: '" + w + "' has no place in the model; ignored");
        }
    }
    static const char* kinds[] = {"HIDAM", "PHIDAM", "HDAM", "PHDAM", "DEDB", "INDEX",   "PSINDEX", "MSDB",
                                  "HISAM", "SHISAM", "HSAM", "SHSAM", "GSAM", "LOGICAL", nullptr};
    bool known = false;
    for (const char** k = kinds; *k; ++k) known = known || d_.kind == *k;
    if (!known) {
        diags_.error(access ? access->value.at : st.at,
                     "DBD ACCESS: " + (d_.kind.empty() ? std::string("required") : "unknown organisation " + d_.kind));
        d_.skip = true;
        return;
    }
    dbdTexts_.emplace(d_.name, std::make_pair(st.at, std::string()));
    d_.dbd = obtain<DSDBD>("DSDBD", d_.name);
    loadedDbds_.push_back(d_.dbd);
    d_.dbd->_set_strDBDName(d_.name.c_str(), omStore);
    d_.dbd->_set_adName(d_.name.c_str(), omStore);
    if (const Operand* v = ops["VERSION"]) {
        std::string t = text(v, &v->value);
        if (!t.empty()) d_.dbd->_set_versionString(t.c_str(), omStore);
    }
    std::string accessId = d_.name + ".ACCESS";
    const Operand* rm = ops["RMNAME"];
    DSDBDaccess* base = nullptr;
    if (d_.kind == "HIDAM" || d_.kind == "PHIDAM") {
        auto a = obtain<DSDBDhidam>("DSDBDhidam", accessId);
        d_.access = a;
    } else if (d_.kind == "HDAM" || d_.kind == "PHDAM" || d_.kind == "DEDB") {
        bool hdam = d_.kind != "DEDB";
        DSDBDdedb a = hdam ? DSDBDdedb(obtain<DSDBDhdam>("DSDBDhdam", accessId).operator->())
                           : obtain<DSDBDdedb>("DSDBDdedb", accessId);
        d_.access = a;
        if (rm) {
            std::string module = text(rm, rm->value.item(0));
            if (!module.empty()) a->_set_rmName(module.c_str(), omStore);
            if (hdam) {
                auto* h = static_cast<_DSDBDhdam*>(a.operator->());
                if (auto n = number("DBD", rm, rm->value.item(1), 0, 32767))
                    h->_set_rootAnchorPoints(static_cast<short>(*n), omStore);
                if (auto n = number("DBD", rm, rm->value.item(2), 0, 2147483647))
                    h->_set_relativeBlockNumber(*n, omStore);
                if (auto n = number("DBD", rm, rm->value.item(3), 0, 2147483647)) h->_set_rootMaxBytes(*n, omStore);
            } else if (rm->value.size() > 1) {
                diags_.warning(rm->value.item(1)->at,
                               "DBD RMNAME: a DEDB keeps only the module's name; the rest is ignored");
            }
        }
    } else if (d_.kind == "INDEX" || d_.kind == "PSINDEX") {
        auto a = obtain<DSDBDindex>("DSDBDindex", accessId);
        if (protect) a->_set_protect(1, omStore);
        if (dosComp) a->_set_dosCompatibility(1, omStore);
        d_.access = a;
    } else if (d_.kind == "MSDB") {
        d_.access = obtain<DSDBDmsdb>("DSDBDmsdb", accessId);
    } else {
        d_.access = obtain<DSDBDaccess>("DSDBDaccess", accessId);
    }
    if (rm && !(d_.kind == "HDAM" || d_.kind == "PHDAM" || d_.kind == "DEDB"))
        diags_.warning(rm->at, "DBD RMNAME: only HDAM and DEDB databases have a randomizing module; ignored");
    (void)base;
    auto* a = static_cast<_DSDBDaccess*>(d_.access.impl());
    a->_set_dliAccess(d_.kind.c_str(), omStore);
    if (os == "VSAM") a->_set_osAccess(1, omStore);
    if (auto p = yesNo("DBD", ops["PASSWD"])) a->_set_passwordFlag(*p, omStore);
    guarded(st.at, "DBD", [&] {
        auto accessHandle = as<DSDBDaccess>(d_.access.impl());
        link<DSDefinedByAccess>(&d_.dbd, &accessHandle);
        std::vector<DSExit> exits;
        exitsOf("DBD", ops["EXIT"], exits);
        for (DSExit& e : exits) link<DSUsesDBDExit>(&d_.dbd, &e);
    });
}

// EXIT=(name,KEY|NOKEY,DATA|NODATA,PATH|NOPATH,(CASCADE|NOCASCADE,KEY,DATA,PATH),LOG|NOLOG),
// or a sublist of such exits. An exit is one object per routine name; `*` on a
// segment stands for the DBD's exits.
void Loader::exitsOf(const std::string& stmt, const Operand* op, std::vector<DSExit>& out) {
    if (!op || op->value.isEmpty()) return;
    std::vector<const Value*> list;
    if (op->value.kind == Value::List && !op->value.items.empty() && op->value.items[0].kind == Value::List)
        for (const Value& v : op->value.items) list.push_back(&v);
    else
        list.push_back(&op->value);
    for (const Value* e : list) {
        std::string name = text(op, e->item(0));
        if (name.empty()) {
            diags_.error(e->at, stmt + " EXIT: the exit routine's name is missing");
            continue;
        }
        if (name == "*") {
            if (stmt == "SEGM")
                for (DSExit* x = d_.dbd->_getFirst_exits(); x; x = d_.dbd->_getNext_exits()) out.push_back(*x);
            else
                diags_.error(e->at, "DBD EXIT: '*' stands for the DBD's exits and belongs on a SEGM");
            continue;
        }
        auto x = obtain<DSExit>("DSExit", name);
        x->_set_strExit(name.c_str(), omStore);
        x->_set_captureRoutine(name.c_str(), omStore);
        for (std::size_t i = 1; i < e->size(); ++i) {
            const Value* f = e->item(i);
            if (f->kind == Value::List) {
                for (std::size_t k = 0; k < f->size(); ++k) {
                    std::string w = text(op, f->item(k));
                    if (w == "CASCADE" || w == "NOCASCADE")
                        x->_set_cascade(w == "CASCADE", omStore);
                    else if (w == "KEY" || w == "NOKEY")
                        x->_set_cascadeKey(w == "KEY", omStore);
                    else if (w == "DATA" || w == "NODATA")
                        x->_set_cascadeData(w == "DATA", omStore);
                    else if (w == "PATH" || w == "NOPATH")
                        x->_set_cascadePath(w == "PATH", omStore);
                    else if (!w.empty())
                        diags_.error(f->item(k)->at, stmt + " EXIT: unknown cascade option " + w);
                }
                continue;
            }
            std::string w = text(op, f);
            if (w == "KEY" || w == "NOKEY")
                x->_set_exitKey(w == "KEY", omStore);
            else if (w == "DATA" || w == "NODATA")
                x->_set_exitData(w == "DATA", omStore);
            else if (w == "PATH" || w == "NOPATH")
                x->_set_exitPath(w == "PATH", omStore);
            else if (w == "LOG" || w == "NOLOG")
                x->_set_logFlag(w == "LOG", omStore);
            else if (w == "CASCADE" || w == "NOCASCADE")
                x->_set_cascade(w == "CASCADE", omStore);
            else if (!w.empty())
                diags_.error(f->at, stmt + " EXIT: unknown exit option " + w);
        }
        out.push_back(x);
    }
}

void Loader::datasetStatement(const Statement& st, bool area) {
    const char* stmt = area ? "AREA" : "DATASET";
    if (area) {
        Operands ops(st, {"DD1", "SIZE", "UOW", "ROOT", "MODEL", "DEVICE"}, diags_);
        if (d_.kind != "DEDB") diags_.error(st.at, "AREA: only a DEDB has areas");
        if (!require(st, ops["DD1"], "DD1")) return;
        std::string dd = text(ops["DD1"], &ops["DD1"]->value);
        auto name = obtain<DSTARNDDname>("DSTARNDDname", dd);
        name->_set_ddsName(dd.c_str(), omStore);
        auto areaObj = obtain<DSArea>("DSArea", dd + ".AREA");
        if (auto n = number(stmt, ops["SIZE"], ops["SIZE"] ? ops["SIZE"]->value.item(0) : nullptr, 0, 32767))
            areaObj->_set_areaSize(static_cast<short>(*n), omStore);
        if (const Operand* u = ops["UOW"]) {
            if (auto n = number(stmt, u, u->value.item(0), 0, 32767))
                areaObj->_set_uow(static_cast<short>(*n), omStore);
            if (auto n = number(stmt, u, u->value.item(1), 0, 32767))
                areaObj->_set_uowOverflow(static_cast<short>(*n), omStore);
        }
        if (const Operand* r = ops["ROOT"]) {
            if (auto n = number(stmt, r, r->value.item(0), 0, 32767))
                areaObj->_set_root(static_cast<short>(*n), omStore);
            if (auto n = number(stmt, r, r->value.item(1), 0, 32767))
                areaObj->_set_rootOverflow(static_cast<short>(*n), omStore);
        }
        guarded(st.at, stmt, [&] {
            auto group = link<DSDSColl>(&d_.dbd, &name);
            if (const Operand* m = ops["MODEL"]) group->_set_dsModel(text(m, &m->value).c_str(), omStore);
            if (const Operand* m = ops["DEVICE"]) group->_set_dsDevice(text(m, &m->value).c_str(), omStore);
            link<DSHasArea>(&group, &areaObj);
        });
        return;
    }
    Operands ops(st,
                 {"DD1", "OVFLW", "DD2", "DEVICE", "MODEL", "SIZE", "SCAN", "RECORD", "RECFM", "BLOCK", "FRSPC",
                  "SEARCHA", "REL"},
                 diags_);
    if (d_.kind == "DEDB") diags_.error(st.at, "DATASET: a DEDB's datasets are AREA statements");
    if (const Operand* rel = ops["REL"]) {
        if (d_.kind != "MSDB") {
            diags_.error(rel->at, "DATASET REL: only an MSDB has a relation type");
        } else {
            auto* m = static_cast<_DSDBDmsdb*>(d_.access.impl());
            std::string type = text(rel, rel->value.item(0)), field = text(rel, rel->value.item(1));
            if (!type.empty()) m->_set_msdbType(type.c_str(), omStore);
            if (!field.empty()) m->_set_msdbField(field.c_str(), omStore);
        }
    }
    if (!ops["DD1"]) {
        if (!ops["REL"]) require(st, nullptr, "DD1");
        return;
    }
    std::string dd = text(ops["DD1"], &ops["DD1"]->value);
    if (dd.empty()) return void(require(st, nullptr, "DD1"));
    auto name = obtain<DSTARNDDname>("DSTARNDDname", dd);
    name->_set_ddsName(dd.c_str(), omStore);
    auto ds = obtain<DSTARNDataset>("DSTARNDataset", dd + ".DATASET");
    if (!st.label.empty()) ds->_set_datasetLabel(st.label.c_str(), omStore);
    auto shortOf = [&](const char* key, std::size_t pos, void (_DSTARNDataset::*set)(short, omSetProcessing)) {
        const Operand* op = ops[key];
        if (!op) return;
        if (auto n = number(stmt, op, op->value.item(pos), 0, 32767))
            (ds.operator->()->*set)(static_cast<short>(*n), omStore);
    };
    shortOf("SIZE", 0, &_DSTARNDataset::_set_size1);
    shortOf("SIZE", 1, &_DSTARNDataset::_set_size2);
    shortOf("SCAN", 0, &_DSTARNDataset::_set_scanCylinders);
    shortOf("RECORD", 0, &_DSTARNDataset::_set_inputRecordLength);
    shortOf("RECORD", 1, &_DSTARNDataset::_set_outputRecordLength);
    shortOf("BLOCK", 0, &_DSTARNDataset::_set_primaryBlockingFactor);
    shortOf("BLOCK", 1, &_DSTARNDataset::_set_overflowBlockingFactor);
    shortOf("FRSPC", 0, &_DSTARNDataset::_set_freeBlockFrequency);
    shortOf("FRSPC", 1, &_DSTARNDataset::_set_freeSpacePercentage);
    if (const Operand* r = ops["RECFM"]) ds->_set_recordFormat(text(r, &r->value).c_str(), omStore);
    if (const Operand* s = ops["SEARCHA"])
        if (auto n = number(stmt, s, &s->value, 0, 9)) ds->_set_searchAlgorithm(static_cast<char>('0' + *n), omStore);
    const Operand* overflow = ops["OVFLW"] ? ops["OVFLW"] : ops["DD2"];
    if (ops["OVFLW"] && ops["DD2"]) diags_.error(ops["DD2"]->at, "DATASET DD2: give either OVFLW or DD2");
    guarded(st.at, stmt, [&] {
        auto group = link<DSDSColl>(&d_.dbd, &name);
        if (const Operand* m = ops["DEVICE"]) group->_set_dsDevice(text(m, &m->value).c_str(), omStore);
        if (const Operand* m = ops["MODEL"]) group->_set_dsModel(text(m, &m->value).c_str(), omStore);
        link<DSHasDataset>(&group, &ds);
        if (overflow) {
            std::string o = text(overflow, &overflow->value);
            if (!o.empty()) {
                auto oname = obtain<DSTARNDDname>("DSTARNDDname", o);
                oname->_set_ddsName(o.c_str(), omStore);
                link<DSHasOverflow>(&ds, &oname);
            }
        }
    });
    d_.dataset = ds;
}

// A primary index LCHILD (POINTER=INDX with no XDFLD after it) takes effect
// when the segment, the next LCHILD or the DBD ends.
void Loader::closeSegment() {
    if (!d_.indexPending) return;
    d_.indexPending = false;
    if (d_.indexUsed) return;
    if (d_.kind != "HIDAM" && d_.kind != "PHIDAM") {
        diags_.error(d_.indexAt,
                     "LCHILD: an index LCHILD without an XDFLD is a primary index, which only an HIDAM DBD has");
        return;
    }
    std::string indexDbd = d_.indexDbd, stmt = "LCHILD";
    Location at = d_.indexAt;
    ADObject access = d_.access;
    deferred_.push_back([this, indexDbd, at, access]() mutable {
        _ADObject* target = findDbd(indexDbd);
        _ADObject* idx = target ? accessOf(target) : nullptr;
        if (!target) return diags_.error(at, "LCHILD NAME: no DBD named " + indexDbd);
        if (!idx || !idx->isKindOf("DSDBDindex"))
            return diags_.error(at, "LCHILD NAME: DBD " + indexDbd + " is not an index DBD");
        guarded(at, "LCHILD", [&] {
            auto hidam = as<DSDBDhidam>(access.impl());
            auto index = as<DSDBDindex>(idx);
            link<DSIndex>(&hidam, &index);
        });
    });
}

void Loader::segmStatement(const Statement& st) {
    closeSegment();
    Operands ops(
        st,
        {"NAME", "PARENT", "BYTES", "FREQ", "RULES", "POINTER", "PTR", "SOURCE", "COMPRTN", "EXIT", "TYPE", "SSPTR"},
        diags_);
    if (!require(st, ops["NAME"], "NAME")) return;
    std::string name = text(ops["NAME"], &ops["NAME"]->value);
    if (d_.segmentNames.count(name))
        return diags_.error(ops["NAME"]->value.at,
                            "SEGM NAME: segment " + name + " is defined twice in DBD " + d_.name);
    if (d_.segmentNames.size() == kMaxSegments)
        return diags_.error(st.at, "SEGM: a DBD holds at most " + std::to_string(kMaxSegments) + " segments");
    d_.segmentNames.insert(name);
    std::string id = d_.name + "." + name;
    bool logical = d_.kind == "LOGICAL", dedb = d_.kind == "DEDB", plain = d_.kind == "MSDB" || d_.kind == "GSAM";
    DSSegment seg;
    if (logical)
        seg = DSSegment(obtain<DSSegmentLogical>("DSSegmentLogical", id).operator->());
    else if (dedb)
        seg = DSSegment(obtain<DSSegmentDEDB>("DSSegmentDEDB", id).operator->());
    else if (plain)
        seg = obtain<DSSegment>("DSSegment", id);
    else
        seg = DSSegment(obtain<DSSegmentComplex>("DSSegmentComplex", id).operator->());
    bool complex = !logical && !dedb && !plain;
    seg->_set_strSegmentName(name.c_str(), omStore);
    if (logical) static_cast<_DSSegmentLogical*>(seg.operator->())->_set_segmentName(name.c_str(), omStore);
    if (const Operand* b = ops["BYTES"]) {
        auto max = number("SEGM", b, b->value.item(0), 0, 32767);
        auto min = b->value.size() > 1 ? number("SEGM", b, b->value.item(1), 0, 32767) : max;
        if (max) seg->_set_maximumLength(static_cast<short>(*max), omStore);
        if (min) seg->_set_minimumLength(static_cast<short>(*min), omStore);
    }
    if (const Operand* f = ops["FREQ"]) {
        std::string t = text(f, &f->value);
        if (!t.empty()) seg->_set_frequency(t.c_str(), omStore);
    }
    if (const Operand* r = ops["RULES"]) {
        std::string codes = r->value.kind == Value::List ? text(r, r->value.item(0)) : std::string();
        std::string place = r->value.kind == Value::List ? text(r, r->value.item(1)) : text(r, &r->value);
        if (place != "FIRST" && place != "LAST" && place != "HERE" && codes.empty() && !place.empty() &&
            place.size() <= 3)
            codes = place, place.clear();  // RULES=PLV
        if (!codes.empty()) {
            if (!complex || codes.size() > 3 || codes.find_first_not_of("PLVB") != std::string::npos)
                diags_.error(r->value.at,
                             "SEGM RULES: insert, delete and replace rules are three of P, L, V, B on a segment of a "
                             "physical DBD");
            else {
                auto* c = static_cast<_DSSegmentComplex*>(seg.operator->());
                c->_set_insertFlag(codes[0], omStore);
                if (codes.size() > 1) c->_set_deleteFlag(codes[1], omStore);
                if (codes.size() > 2) c->_set_replaceFlag(codes[2], omStore);
            }
        }
        if (!place.empty()) seg->_set_rules(place.c_str(), omStore);
    }
    // POINTER: the logical child's own pointers go to its logical relationship,
    // the rest stays with the segment as written.
    const Operand* pointer = ops["POINTER"] ? ops["POINTER"] : ops["PTR"];
    std::string segPointers;
    bool lparnt = false, ctr = false;
    std::string ltwin;
    if (pointer) {
        for (std::size_t i = 0; i < pointer->value.size(); ++i) {
            std::string w = text(pointer, pointer->value.item(i));
            if (w == "LPARNT")
                lparnt = true;
            else if (w == "CTR")
                ctr = true;
            else if (w == "LTWIN" || w == "LTWINBWD")
                ltwin = w;
            else if (!w.empty())
                segPointers += (segPointers.empty() ? "" : ",") + w;
        }
        if (!segPointers.empty()) {
            if (complex)
                static_cast<_DSSegmentComplex*>(seg.operator->())->_set_segmPointer(segPointers.c_str(), omStore);
            else
                diags_.warning(pointer->at,
                               "SEGM POINTER: only segments of physical DBDs keep pointer options; ignored");
        }
    }
    if (dedb) {
        auto* s = static_cast<_DSSegmentDEDB*>(seg.operator->());
        if (const Operand* t = ops["TYPE"]) {
            std::string w = text(t, &t->value);
            if (w == "DIR" || w == "SEQ")
                s->_set_directDependent(w == "DIR", omStore);
            else
                diags_.error(t->value.at, "SEGM TYPE: DIR or SEQ is expected, not '" + w + "'");
        }
        if (const Operand* p = ops["SSPTR"])
            if (auto n = number("SEGM", p, &p->value, 0, 8)) s->_set_subsetPointers(static_cast<char>(*n), omStore);
    } else if (ops["TYPE"] || ops["SSPTR"]) {
        diags_.warning((ops["TYPE"] ? ops["TYPE"] : ops["SSPTR"])->at,
                       "SEGM TYPE and SSPTR: only DEDB segments have them; ignored");
    }
    Location at = st.at;
    guarded(at, "SEGM", [&] {
        link<DSContainsSegment>(&d_.dbd, &seg);
        // PARENT=0 | name | ((name[,SNGL|DBLE])[,(lparent,PHYSICAL|VIRTUAL,dbd)])
        const Operand* parent = ops["PARENT"];
        // PARENT=(name,DBLE) is taken as the physical form alone.
        bool flat = parent && parent->value.kind == Value::List && !parent->value.items.empty() &&
                    parent->value.items[0].kind != Value::List;
        const Value* physical = parent ? (flat ? &parent->value : parent->value.item(0)) : nullptr;
        const Value* logicalParent =
            parent && !flat && parent->value.kind == Value::List ? parent->value.item(1) : nullptr;
        std::string parentName = physical ? text(parent, physical->item(0)) : std::string();
        if (parentName.empty() || parentName == "0") {
            if (d_.rootSegment.isEmpty()) d_.rootSegment = seg;
        } else {
            _ADObject* p = findSegment(d_.name, parentName);
            if (!p) {
                diags_.error(physical->at,
                             "SEGM PARENT: no segment " + parentName + " before " + name + " in DBD " + d_.name);
            } else {
                DSSegment ps(static_cast<_DSSegment*>(p));
                auto l = link<DSParent>(&seg, &ps);
                std::string ptr = physical->size() > 1 ? text(parent, physical->item(1)) : std::string();
                if (!ptr.empty()) l->_set_pcPointer(ptr.c_str(), omStore);
            }
        }
        if (logicalParent && !logicalParent->isEmpty()) {
            if (!complex)
                return diags_.error(logicalParent->at,
                                    "SEGM PARENT: only segments of physical DBDs have a logical parent");
            std::string lpName = text(parent, logicalParent->item(0)), kind = text(parent, logicalParent->item(1)),
                        lpDbd = text(parent, logicalParent->item(2));
            if (lpDbd.empty()) lpDbd = d_.name;
            Location lpAt = logicalParent->at;
            ADObject child = seg;
            deferred_.push_back([=, this] {
                _ADObject* lp = findSegment(lpDbd, lpName);
                if (!lp || !lp->isKindOf("DSSegmentComplex"))
                    return diags_.error(lpAt, "SEGM PARENT: no segment " + lpName + " of a physical DBD " + lpDbd +
                                                  " as logical parent");
                guarded(lpAt, "SEGM", [&] {
                    auto parentSeg = as<DSSegmentComplex>(lp), childSeg = as<DSSegmentComplex>(child.impl());
                    // The logical parent's LCHILD statement may have made the relationship already.
                    DSLChild rel;
                    for (const ADObject& l : *childSeg->_get_logParent())
                        if (static_cast<_DSLChild*>(l.impl())->_get_source()->impl() == lp)
                            rel = as<DSLChild>(l.impl());
                    if (rel.isEmpty()) rel = link<DSLChild>(&parentSeg, &childSeg);
                    if (!kind.empty()) rel->_set_virtualParent(kind.c_str(), omStore);
                    if (lparnt) rel->_set_lparent(1, omStore);
                    if (ctr) rel->_set_counter(1, omStore);
                    if (!ltwin.empty()) rel->_set_ltwin(ltwin.c_str(), omStore);
                });
            });
        } else if (lparnt || ctr || !ltwin.empty()) {
            diags_.warning(pointer->at, "SEGM POINTER: LPARNT, LTWIN and CTR belong to a logical child; ignored");
        }
        if (complex && !d_.dataset.isEmpty()) {
            auto c = as<DSSegmentComplex>(seg.impl());
            auto ds = as<DSTARNDataset>(d_.dataset.impl());
            link<DSIsPartOf>(&c, &ds);
        }
        // SOURCE=((segment,KEY|DATA,dbd),...) of a logical segment.
        if (const Operand* source = ops["SOURCE"]) {
            if (!logical)
                return diags_.warning(source->at,
                                      "SEGM SOURCE: only segments of a logical DBD keep their sources; ignored");
            const Value& v = source->value;
            std::vector<const Value*> list;
            if (v.kind == Value::List && !v.items.empty() && v.items[0].kind == Value::List)
                for (const Value& s : v.items) list.push_back(&s);
            else
                list.push_back(&v);
            ADObject logicalSeg = seg;
            for (const Value* s : list) {
                std::string srcName = text(source, s->item(0)), mode = text(source, s->item(1)),
                            srcDbd = text(source, s->item(2));
                if (srcName.empty() || srcDbd.empty()) {
                    diags_.error(s->at, "SEGM SOURCE: (segment,KEY|DATA,dbd) is expected");
                    continue;
                }
                if (!mode.empty() && mode != "KEY" && mode != "DATA") {
                    diags_.error(s->item(1)->at, "SEGM SOURCE: KEY or DATA is expected, not '" + mode + "'");
                    continue;
                }
                Location srcAt = s->at;
                deferred_.push_back([=, this] {
                    _ADObject* src = findSegment(srcDbd, srcName);
                    if (!src) return diags_.error(srcAt, "SEGM SOURCE: no segment " + srcName + " in DBD " + srcDbd);
                    guarded(srcAt, "SEGM", [&] {
                        auto ls = as<DSSegmentLogical>(logicalSeg.impl());
                        DSSegment ss(static_cast<_DSSegment*>(src));
                        auto l = link<DSSource>(&ls, &ss);
                        l->_set_strSOURCE(srcName.c_str(), omStore);
                        if (mode == "DATA") l->_set_dataAlso(1, omStore);
                    });
                });
            }
        }
        // COMPRTN=(routine[,DATA|KEY][,INIT])
        if (const Operand* c = ops["COMPRTN"]) {
            std::string routine = text(c, c->value.item(0));
            if (routine.empty()) return diags_.error(c->value.at, "SEGM COMPRTN: the routine's name is missing");
            auto r = obtain<DSCompRoutine>("DSCompRoutine", routine);
            r->_set_routine(routine.c_str(), omStore);
            for (std::size_t i = 1; i < c->value.size(); ++i) {
                std::string w = text(c, c->value.item(i));
                if (w == "DATA" || w == "KEY")
                    r->_set_dataOnly(w == "DATA", omStore);
                else if (w == "INIT")
                    r->_set_initialization(1, omStore);
                else if (!w.empty())
                    diags_.error(c->value.item(i)->at, "SEGM COMPRTN: unknown option " + w);
            }
            link<DSCompressedBy>(&seg, &r);
        }
        std::vector<DSExit> exits;
        exitsOf("SEGM", ops["EXIT"], exits);
        for (DSExit& e : exits) link<DSUsesSEGMExit>(&seg, &e);
    });
    d_.segment = seg;
    d_.segmentName = name;
}

void Loader::fieldStatement(const Statement& st) {
    Operands ops(st, {"NAME", "START", "BYTES", "TYPE"}, diags_);
    if (d_.segment.isEmpty()) {
        if (!openerFailed()) diags_.error(st.at, "FIELD: no SEGM before it");
        return;
    }
    if (!require(st, ops["NAME"], "NAME")) return;
    const Value& nv = ops["NAME"]->value;
    std::string name = text(ops["NAME"], nv.item(0));
    if (name.empty()) return void(require(st, nullptr, "NAME"));
    bool seq = false, unique = false;
    for (std::size_t i = 1; i < nv.size(); ++i) {
        std::string w = text(ops["NAME"], nv.item(i));
        if (w == "SEQ")
            seq = true;
        else if (w == "U")
            unique = true;
        else if (w == "M")
            unique = false;
        else if (!w.empty())
            diags_.error(nv.item(i)->at, "FIELD NAME: SEQ, U or M is expected, not '" + w + "'");
    }
    if (unique && !seq) diags_.error(nv.at, "FIELD NAME: U or M only follow SEQ");
    auto start = number("FIELD", ops["START"], ops["START"] ? &ops["START"]->value : nullptr, 1, 32767);
    auto bytes = number("FIELD", ops["BYTES"], ops["BYTES"] ? &ops["BYTES"]->value : nullptr, 1, 32767);
    std::string type = ops["TYPE"] ? text(ops["TYPE"], &ops["TYPE"]->value) : std::string();
    if (type.size() > 1 || (!type.empty() && !std::isalpha(static_cast<unsigned char>(type[0]))))
        diags_.error(ops["TYPE"]->value.at, "FIELD TYPE: one letter is expected, not '" + type + "'");
    if (++d_.fields > kMaxFields)
        return diags_.error(st.at, "FIELD: a DBD holds at most " + std::to_string(kMaxFields) + " fields");
    auto* segImpl = d_.segment.impl();
    if (findField(segImpl, name))
        return diags_.error(nv.at, "FIELD NAME: field " + name + " is defined twice in segment " + d_.segmentName);
    std::string id = d_.segmentName + "." + name + "@" + segImpl->objID();
    auto f = obtain<DSField>("DSField", id);
    f->_set_strFieldName(name.c_str(), omStore);
    if (seq) f->_set_sequenceField(1, omStore);
    if (unique) f->_set_uniqueSequence(1, omStore);
    guarded(st.at, "FIELD", [&] {
        auto seg = as<DSSegment>(segImpl);
        link<DSHasField>(&seg, &f);
        // The geometry lives in the data item the field uses (its offset) and
        // in the item's type definition (length and type), both named as the field.
        if (!start && !bytes && type.empty()) return;
        auto item = obtain<DSDataItem>("DSDataItem", id);
        auto def = obtain<DSSimpleTypeDef>("DSSimpleTypeDef", id);
        item->_set_offset(start.value_or(0), omStore);
        def->_set_length(bytes.value_or(0), omStore);
        def->_set_dataType(type.empty() ? kDefaultFieldType : type.c_str(), omStore);
        link<DSMakesUseOf>(&f, &item);
        link<DSLinkDataItm2DataDef>(&item, &def);
    });
}

void Loader::lchildStatement(const Statement& st) {
    closeSegment();
    Operands ops(st, {"NAME", "POINTER", "PTR", "PAIR", "RULES", "INDEX"}, diags_);
    if (d_.segment.isEmpty()) {
        if (!openerFailed()) diags_.error(st.at, "LCHILD: no SEGM before it");
        return;
    }
    if (!require(st, ops["NAME"], "NAME")) return;
    const Operand* nameOp = ops["NAME"];
    std::string childName = text(nameOp, nameOp->value.item(0)), childDbd = text(nameOp, nameOp->value.item(1));
    if (childName.empty()) return void(require(st, nullptr, "NAME"));
    if (childDbd.empty()) childDbd = d_.name;
    const Operand* pointer = ops["POINTER"] ? ops["POINTER"] : ops["PTR"];
    std::string ptr = pointer ? text(pointer, pointer->value.item(0)) : std::string();
    Location nameAt = nameOp->value.at;
    if (d_.kind == "INDEX" || d_.kind == "PSINDEX") {
        // The index's side of a primary or secondary index: checked here; the
        // indexed DBD's LCHILD and XDFLD make the links.
        std::string indexName = ops["INDEX"] ? text(ops["INDEX"], ops["INDEX"]->value.item(0)) : std::string();
        Location indexAt = ops["INDEX"] ? ops["INDEX"]->value.at : st.at;
        deferred_.push_back([=, this] {
            _ADObject* seg = findSegment(childDbd, childName);
            if (!seg) return diags_.error(nameAt, "LCHILD NAME: no segment " + childName + " in DBD " + childDbd);
            if (indexName.empty()) return;
            if (!findField(seg, indexName) && !DSRegistrar::findObj("DSXDFLD", indexName.c_str(), version_.c_str()))
                diags_.error(indexAt, "LCHILD INDEX: no field or XDFLD " + indexName + " in segment " + childName);
        });
        return;
    }
    if (ptr == "INDX" || ptr == "SYMB") {
        d_.indexPending = true;
        d_.indexUsed = false;
        d_.indexDbd = childDbd;
        d_.indexAt = nameAt;
        d_.symbolic = ptr == "SYMB";
        return;
    }
    // A logical relationship: the current segment is the logical parent.
    if (!d_.segment->isKindOf("DSSegmentComplex"))
        return diags_.error(st.at, "LCHILD: only segments of physical DBDs are logical parents");
    std::string rules = ops["RULES"] ? text(ops["RULES"], ops["RULES"]->value.item(0)) : std::string();
    std::string pair = ops["PAIR"] ? text(ops["PAIR"], &ops["PAIR"]->value) : std::string();
    Location pairAt = ops["PAIR"] ? ops["PAIR"]->value.at : st.at;
    ADObject parent = d_.segment;
    std::string parentName = d_.segmentName;
    // The paired segment is the other logical child: a child of this LCHILD's
    // segment, so it lives in this DBD (in another one than the named child's
    // when the pair spans two databases).
    std::string pairDbd = d_.name;
    if (ops["INDEX"])
        diags_.warning(ops["INDEX"]->at, "LCHILD INDEX: only an index DBD's LCHILD names its index field; ignored");
    deferred_.push_back([=, this] {
        _ADObject* child = findSegment(childDbd, childName);
        if (!child || !child->isKindOf("DSSegmentComplex"))
            return diags_.error(nameAt, "LCHILD NAME: no segment " + childName + " of a physical DBD " + childDbd);
        _ADObject* paired = nullptr;
        if (!pair.empty() && !(paired = findSegment(pairDbd, pair)))
            return diags_.error(pairAt, "LCHILD PAIR: no segment " + pair + " in DBD " + pairDbd);
        guarded(nameAt, "LCHILD", [&] {
            auto p = as<DSSegmentComplex>(parent.impl()), c = as<DSSegmentComplex>(child);
            DSLChild rel;
            for (const ADObject& l : *c->_get_logParent())
                if (static_cast<_DSLChild*>(l.impl())->_get_source()->impl() == parent.impl())
                    rel = as<DSLChild>(l.impl());
            if (rel.isEmpty()) rel = link<DSLChild>(&p, &c);
            rel->_set_strLPARENT(parentName.c_str(), omStore);
            if (!ptr.empty()) rel->_set_lcPointer(ptr.c_str(), omStore);
            if (!rules.empty()) rel->_set_rules(rules.c_str(), omStore);
            if (paired) {
                if (!paired->isKindOf("DSSegmentComplex"))
                    return diags_.error(pairAt, "LCHILD PAIR: segment " + pair + " is not of a physical DBD");
                auto ps = as<DSSegmentComplex>(paired);
                link<DSHasPair>(&rel, &ps);
            }
        });
    });
}

void Loader::xdfldStatement(const Statement& st) {
    Operands ops(st, {"NAME", "SEGMENT", "SRCH", "SUBSEQ", "DDATA", "NULLVAL", "EXTRTN", "CONST"}, diags_);
    if (!d_.indexPending) return diags_.error(st.at, "XDFLD: no LCHILD naming an index DBD (POINTER=INDX) before it");
    if (!d_.segment->isKindOf("DSSegmentComplex"))
        return diags_.error(st.at, "XDFLD: only segments of physical DBDs are indexed");
    if (!require(st, ops["NAME"], "NAME")) return;
    d_.indexUsed = true;
    std::string name = text(ops["NAME"], &ops["NAME"]->value);
    if (_ADObject* old = DSRegistrar::findObj("DSXDFLD", name.c_str(), version_.c_str());
        old && static_cast<_DSXDFLD*>(old)->_get_sourceSEGMcmpx()->count() > 0)
        return diags_.error(ops["NAME"]->value.at, "XDFLD NAME: an XDFLD named " + name + " is already defined");
    auto x = obtain<DSXDFLD>("DSXDFLD", name);
    x->_set_xdfldName(name.c_str(), omStore);
    for (auto [key, set] :
         {std::pair{"NULLVAL", &_DSXDFLD::_set_nullValue}, std::pair{"EXTRTN", &_DSXDFLD::_set_exitRoutine},
          std::pair{"CONST", &_DSXDFLD::_set_constant}})
        if (const Operand* op = ops[key]) {
            std::string t = text(op, &op->value);
            if (!t.empty()) (x.operator->()->*set)(t.c_str(), omStore);
        }
    if (d_.symbolic) x->_set_symbolic(1, omStore);
    ADObject target = d_.segment;
    std::string indexDbd = d_.indexDbd, dbdName = d_.name;
    Location indexAt = d_.indexAt, at = st.at;
    std::string sourceName = ops["SEGMENT"] ? text(ops["SEGMENT"], &ops["SEGMENT"]->value) : std::string();
    Location sourceAt = ops["SEGMENT"] ? ops["SEGMENT"]->value.at : st.at;
    struct FieldList {
        const char* key;
        std::vector<std::pair<std::string, Location>> names;
    };
    std::vector<FieldList> lists = {{"SRCH", {}}, {"SUBSEQ", {}}, {"DDATA", {}}};
    for (FieldList& l : lists)
        if (const Operand* op = ops[l.key])
            for (std::size_t i = 0; i < op->value.size(); ++i)
                l.names.emplace_back(text(op, op->value.item(i)), op->value.item(i)->at);
    if (lists[0].names.empty()) diags_.error(st.at, "XDFLD SRCH: required");
    guarded(at, "XDFLD", [&] {
        auto t = as<DSSegmentComplex>(target.impl());
        link<DSHasIndex>(&t, &x);
    });
    deferred_.push_back([=, this]() mutable {
        _ADObject* idxDbd = findDbd(indexDbd);
        _ADObject* idx = idxDbd ? accessOf(idxDbd) : nullptr;
        if (!idxDbd) return diags_.error(indexAt, "LCHILD NAME: no DBD named " + indexDbd);
        if (!idx || !idx->isKindOf("DSDBDindex"))
            return diags_.error(indexAt, "LCHILD NAME: DBD " + indexDbd + " is not an index DBD");
        _ADObject* source = target.impl();
        if (!sourceName.empty() && !(source = findSegment(dbdName, sourceName)))
            return diags_.error(sourceAt, "XDFLD SEGMENT: no segment " + sourceName + " in DBD " + dbdName);
        if (!source->isKindOf("DSSegmentComplex"))
            return diags_.error(sourceAt, "XDFLD SEGMENT: segment " + sourceName + " is not of a physical DBD");
        guarded(at, "XDFLD", [&] {
            auto s = as<DSSegmentComplex>(source);
            auto index = as<DSDBDindex>(idx);
            link<DSHasIndexSource>(&x, &s);
            link<DSIsUseOf>(&x, &index);
            for (const FieldList& l : lists)
                for (const auto& [fname, fat] : l.names) {
                    _ADObject* f = findField(source, fname);
                    if (!f) {
                        diags_.error(fat, std::string("XDFLD ") + l.key + ": no field " + fname + " in segment " +
                                              static_cast<_DSSegment*>(source)->_get_strSegmentName());
                        continue;
                    }
                    auto field = as<DSField>(f);
                    if (l.key[1] == 'R')
                        link<DSHasSearch>(&x, &field);
                    else if (l.key[1] == 'U')
                        link<DSHasSubsequence>(&x, &field);
                    else
                        link<DSHasDuplicateData>(&x, &field);
                }
        });
    });
}

void Loader::endDbd(const Location& at, bool byDbdgen) {
    if (!d_.open) return;
    if (!byDbdgen) diags_.error(at, "DBD " + d_.name + ": the deck ends before DBDGEN");
    if (d_.repeated) {
        const auto& [firstAt, firstText] = dbdTexts_[d_.name];
        if (firstText == d_.text)
            diags_.warning(d_.at, "DBD " + d_.name + ": defined again identically (first at " + where(firstAt) +
                                      "); one definition is kept");
        else
            diags_.error(d_.at, "DBD " + d_.name + ": defined again differently (first at " + where(firstAt) + ")");
    } else if (!d_.skip) {
        closeSegment();
        dbdTexts_[d_.name].second = d_.text;
        // An HIDAM database's root sequence field is its root segment's sequence field.
        if (d_.access->isKindOf("DSDBDhidam") && !d_.rootSegment.isEmpty()) {
            auto root = as<DSSegment>(d_.rootSegment.impl());
            for (DSField* f = root->_getFirst_fields(); f; f = root->_getNext_fields())
                if ((*f)->_get_sequenceField()) {
                    DSField seqField = *f;
                    auto hidam = as<DSDBDhidam>(d_.access.impl());
                    guarded(d_.at, "DBD", [&] { link<DSHasRootSequence>(&hidam, &seqField); });
                    break;
                }
        }
    } else if (!d_.name.empty() && dbdTexts_.count(d_.name)) {
        dbdTexts_[d_.name].second = d_.text;
    }
    d_ = DbdState();
}

// ---------------------------------------------------------------------------
// Decks

void Loader::readDeck(const std::string& file, const std::vector<Statement>& statements) {
    PsbGroup psb;
    Location lastAt{&file, 0, 0};
    for (const Statement& st : statements) {
        lastAt = here_ = st.at;
        const std::string& op = st.operation;
        const Op kind = opOf(op);
        if (kind == Op::Directive) continue;
        if (kind == Op::Unmodelled) {
            diags_.warning(st.at, op + ": statement has no place in the model; skipped");
            continue;
        }
        bool dataset = kind == Op::Dataset || kind == Op::Area;
        bool dbdPart = dataset || kind == Op::Segm || kind == Op::Field || kind == Op::Lchild || kind == Op::Xdfld;
        bool psbPart = kind == Op::Pcb || kind == Op::Senseg || kind == Op::Senfld;
        if (kind == Op::Dbd) {
            errorsAtOpener_ = kNoOpener;
            if (d_.open) endDbd(st.at, false);
            if (!psb.statements.empty()) {
                diags_.error(st.at, "DBD: the PCBs before it are not ended by PSBGEN");
                psb = PsbGroup();
            }
            dbdStatement(st);
        } else if (kind == Op::Dbdgen) {
            if (!d_.open) diags_.error(st.at, "DBDGEN: no DBD statement before it");
            endDbd(st.at, true);
        } else if (dbdPart) {
            if (!d_.open) {
                diags_.error(st.at, op + ": outside a DBD (no DBD statement before it)");
                continue;
            }
            d_.text.append(op).append(" ").append(st.source).append("\n");
            if (d_.skip) continue;
            if ((kind == Op::Lchild || kind == Op::Xdfld) && ++d_.references > kMaxReferences) {
                diags_.error(st.at, op + ": a DBD holds at most " + std::to_string(kMaxReferences) +
                                        " LCHILD and XDFLD statements");
                continue;
            }
            if (dataset && ++d_.datasets > kMaxDatasets) {
                diags_.error(st.at, op + ": a DBD holds at most " + std::to_string(kMaxDatasets) + " dataset groups");
                continue;
            }
            if (dataset) {
                errorsAtOpener_ = kNoOpener;
                closeSegment();
                datasetStatement(st, kind == Op::Area);
            } else if (kind == Op::Segm) {
                errorsAtOpener_ = diags_.errorCount();
                segmStatement(st);
            } else if (kind == Op::Field) {
                fieldStatement(st);
            } else if (kind == Op::Lchild) {
                lchildStatement(st);
            } else {
                xdfldStatement(st);
            }
        } else if (psbPart || kind == Op::Psbgen) {
            if (d_.open) endDbd(st.at, false);
            if (kind == Op::Psbgen) {
                psb.psbgen = &st;
                psbs_.push_back(std::move(psb));
                psb = PsbGroup();
            } else {
                psb.statements.push_back(&st);
            }
        } else {
            diags_.error(st.at, "unknown statement '" + op + "'");
        }
        if (diags_.full()) return;
    }
    Location end{&file, lastAt.line, 1};
    if (d_.open) endDbd(end, false);
    if (!psb.statements.empty()) diags_.error(psb.statements.front()->at, "PCB: the deck ends before PSBGEN");
}

void Loader::resolve() {
    // The DBDs' references first (they may add index targets that PCBs name),
    // then the PSBs.
    for (std::size_t i = 0; i < deferred_.size() && !diags_.full(); ++i) deferred_[i]();
    for (const PsbGroup& g : psbs_) {
        if (diags_.full()) break;
        buildPsb(g);
    }
}

// ---------------------------------------------------------------------------
// PSB

void Loader::buildPsb(const PsbGroup& group) {
    const Statement& gen = *group.psbgen;
    here_ = gen.at;
    Operands ops(
        gen,
        {"PSBNAME", "LANG", "CMPAT", "IOASIZE", "SSASIZE", "IOEROPN", "LOCKMAX", "MAXQ", "OLIC", "HPSBNAME", "WRTOP"},
        diags_);
    if (!require(gen, ops["PSBNAME"], "PSBNAME")) return;
    std::string name = text(ops["PSBNAME"], &ops["PSBNAME"]->value);
    // The definition's text, to tell a repeated definition from a differing one.
    std::string fullText;
    std::size_t size = gen.source.size() + 8;
    for (const Statement* st : group.statements) size += st->operation.size() + st->source.size() + 2;
    fullText.reserve(size);
    for (const Statement* st : group.statements)
        fullText.append(st->operation).append(" ").append(st->source).append("\n");
    fullText.append("PSBGEN ").append(gen.source).append("\n");
    if (auto first = psbTexts_.find(name); first != psbTexts_.end()) {
        if (first->second.second == fullText)
            diags_.warning(gen.at, "PSB " + name + ": defined again identically (first at " +
                                       where(first->second.first) + "); one definition is kept");
        else
            diags_.error(gen.at,
                         "PSB " + name + ": defined again differently (first at " + where(first->second.first) + ")");
        return;
    }
    psbTexts_.emplace(name, std::make_pair(gen.at, fullText));
    if (DSRegistrar::findObj("DSPSB", name.c_str(), version_.c_str())) {
        diags_.warning(gen.at, "PSB " + name + ": already in the repository in version " + version_ +
                                   "; the definition there is kept");
        return;
    }
    auto psb = obtain<DSPSB>("DSPSB", name);
    loadedPsbs_.push_back(psb);
    psb->_set_strPSBName(name.c_str(), omStore);
    psb->_set_adName(name.c_str(), omStore);
    if (const Operand* l = ops["LANG"]) psb->_set_language(text(l, &l->value).c_str(), omStore);
    if (const Operand* h = ops["HPSBNAME"]) psb->_set_hpPSBName(text(h, &h->value).c_str(), omStore);
    if (auto v = yesNo("PSBGEN", ops["CMPAT"])) psb->_set_compatibility(*v, omStore);
    if (auto v = yesNo("PSBGEN", ops["OLIC"])) psb->_set_onlineImageCopy(*v, omStore);
    if (auto v = yesNo("PSBGEN", ops["WRTOP"])) psb->_set_writeToOperator(*v, omStore);
    if (const Operand* o = ops["IOASIZE"])
        if (auto n = number("PSBGEN", o, &o->value, 0, 2147483647)) psb->_set_ioaSize(*n, omStore);
    if (const Operand* o = ops["SSASIZE"])
        if (auto n = number("PSBGEN", o, &o->value, 0, 2147483647)) psb->_set_ssaSize(*n, omStore);
    if (const Operand* o = ops["IOEROPN"])
        if (auto n = number("PSBGEN", o, o->value.item(0), 0, 32767))
            psb->_set_ioErrorOption(static_cast<short>(*n), omStore);
    if (const Operand* o = ops["LOCKMAX"])
        if (auto n = number("PSBGEN", o, &o->value, 0, 32767)) psb->_set_lockMaximum(static_cast<short>(*n), omStore);
    if (const Operand* o = ops["MAXQ"])
        if (auto n = number("PSBGEN", o, &o->value, 0, 65535))
            psb->_set_maximumQxCalls(static_cast<unsigned short>(*n), omStore);

    int pcbNumber = 0, sensegCount = 0, senfldCount = 0;
    DSPCBdb dbType;       // the database PCB the SENSEGs belong to
    std::string dbdName;  // its DBD
    std::string pcbName;  // its name, which qualifies the SENSEGs' identities
    std::unordered_map<std::string, DSSenSegment> sensegs;
    DSSenSegment senseg;  // the last SENSEG
    std::string sensegName;
    for (const Statement* stp : group.statements) {
        const Statement& st = *stp;
        here_ = st.at;
        const Op kind = opOf(st.operation);
        if (kind == Op::Pcb) {
            errorsAtOpener_ = diags_.errorCount();
            Operands p(st,
                       {"TYPE", "DBDNAME", "PROCOPT", "KEYLEN", "POS", "PROCSEQ", "PCBNAME", "LIST", "SB", "NAME",
                        "LTERM", "ALTRESP", "EXPRESS", "MODIFY", "SAMETRM"},
                       diags_);
            if (++pcbNumber > kMaxPCBs)
                return diags_.error(st.at, "PCB: a PSB holds at most " + std::to_string(kMaxPCBs) + " PCBs");
            dbType = DSPCBdb();
            senseg = DSSenSegment();
            sensegs.clear();
            std::string type = p["TYPE"] ? text(p["TYPE"], &p["TYPE"]->value) : "DB";
            if (type != "DB" && type != "TP" && type != "GSAM") {
                diags_.error(p["TYPE"]->value.at, "PCB TYPE: DB, TP or GSAM is expected, not '" + type + "'");
                continue;
            }
            pcbName = p["PCBNAME"] ? text(p["PCBNAME"], &p["PCBNAME"]->value) : st.label;
            std::string pcbId = name + ".PCB" + std::to_string(pcbNumber);
            std::string qual = pcbName.empty() ? pcbId : pcbName;
            auto pcb = obtain<DSPCB>("DSPCB", pcbId);
            if (!pcbName.empty()) {
                pcb->_set_strPCBAccessName(pcbName.c_str(), omStore);
                pcb->_set_adName(pcbName.c_str(), omStore);
            }
            if (auto v = yesNo("PCB", p["LIST"])) pcb->_set_list(*v, omStore);
            Location nameAt = p["PCBNAME"] ? p["PCBNAME"]->value.at : st.at;
            auto reused = [&](bool existed) {
                if (existed) diags_.error(nameAt, "PCB PCBNAME: the name " + qual + " is already used by another PCB");
                return existed;
            };
            bool existed = false;
            guarded(st.at, "PCB", [&] {
                link<DSIncludesPCB>(&psb, &pcb);
                if (type == "TP") {
                    auto tp = obtain<DSPCBtp>("DSPCBtp", qual + ".TYPE", &existed);
                    if (reused(existed)) return;
                    tp->_set_strPCBtype("TP", omStore);
                    if (auto v = yesNo("PCB", p["ALTRESP"])) tp->_set_alternateResponse(*v, omStore);
                    if (auto v = yesNo("PCB", p["EXPRESS"])) tp->_set_express(*v, omStore);
                    if (auto v = yesNo("PCB", p["MODIFY"])) tp->_set_modify(*v, omStore);
                    if (auto v = yesNo("PCB", p["SAMETRM"])) tp->_set_sameTerminal(*v, omStore);
                    link<DSSpecifiedByType>(&pcb, &tp);
                    for (const char* key : {"NAME", "LTERM"})
                        if (const Operand* d = p[key])
                            for (std::size_t i = 0; i < d->value.size(); ++i) {
                                std::string lterm = text(d, d->value.item(i));
                                if (lterm.empty()) continue;
                                auto dest = obtain<DSOutputDest>("DSOutputDest", lterm);
                                dest->_set_ltermName(lterm.c_str(), omStore);
                                if (key[0] == 'L') dest->_set_destinationType("LTERM", omStore);
                                link<DSRefersTo>(&tp, &dest);
                            }
                    for (const char* key : {"DBDNAME", "PROCOPT", "KEYLEN", "POS", "PROCSEQ", "SB"})
                        if (p[key])
                            diags_.warning(p[key]->at,
                                           std::string("PCB ") + key + ": a TP PCB has no such operand; ignored");
                    return;
                }
                if (!require(st, p["DBDNAME"], "DBDNAME")) return;
                _ADObject* dbd = dbdNamed("PCB", p["DBDNAME"], &p["DBDNAME"]->value);
                if (!dbd) return;
                DSPCBbased based;
                if (type == "DB") {
                    dbType = obtain<DSPCBdb>("DSPCBdb", qual + ".TYPE", &existed);
                    if (reused(existed)) return void(dbType = DSPCBdb());
                    based = DSPCBbased(dbType.operator->());
                    dbdName = text(p["DBDNAME"], &p["DBDNAME"]->value);
                    if (const Operand* k = p["KEYLEN"])
                        if (auto n = number("PCB", k, &k->value, 0, 65535))
                            dbType->_set_keyLength(static_cast<unsigned short>(*n), omStore);
                    if (const Operand* pos = p["POS"]) {
                        std::string w = text(pos, &pos->value);
                        if (w == "S" || w == "SINGLE" || w == "M" || w == "MULTIPLE")
                            dbType->_set_positioning(w[0], omStore);
                        else
                            diags_.error(pos->value.at,
                                         "PCB POS: S, SINGLE, M or MULTIPLE is expected, not '" + w + "'");
                    }
                    if (const Operand* sb = p["SB"])
                        dbType->_set_sequentialBuffering(text(sb, &sb->value).c_str(), omStore);
                } else {
                    based = obtain<DSPCBbased>("DSPCBbased", qual + ".TYPE", &existed);
                    if (reused(existed)) return;
                    for (const char* key : {"KEYLEN", "POS", "PROCSEQ", "SB"})
                        if (p[key])
                            diags_.warning(p[key]->at,
                                           std::string("PCB ") + key + ": a GSAM PCB has no such operand; ignored");
                }
                based->_set_strPCBtype(type.c_str(), omStore);
                if (const Operand* po = p["PROCOPT"]) based->_set_procoptPCB(text(po, &po->value).c_str(), omStore);
                link<DSSpecifiedByType>(&pcb, &based);
                DSDBD base(static_cast<_DSDBD*>(dbd));
                link<DSBasedOn>(&based, &base);
                if (type == "DB" && p["PROCSEQ"]) {
                    _ADObject* idxDbd = dbdNamed("PCB", p["PROCSEQ"], &p["PROCSEQ"]->value);
                    _ADObject* idx = idxDbd ? accessOf(idxDbd) : nullptr;
                    if (idxDbd && (!idx || !idx->isKindOf("DSDBDindex")))
                        return diags_.error(
                            p["PROCSEQ"]->value.at,
                            "PCB PROCSEQ: DBD " + text(p["PROCSEQ"], &p["PROCSEQ"]->value) + " is not an index DBD");
                    if (idx) {
                        auto index = as<DSDBDindex>(idx);
                        link<DSSequencedBy>(&dbType, &index);
                    }
                }
                for (const char* key : {"NAME", "LTERM", "ALTRESP", "EXPRESS", "MODIFY", "SAMETRM"})
                    if (p[key])
                        diags_.warning(p[key]->at, std::string("PCB ") + key + ": only a TP PCB has it; ignored");
            });
        } else if (kind == Op::Senseg) {
            bool quiet = openerFailed();
            errorsAtOpener_ = diags_.errorCount();
            Operands s(st, {"NAME", "PARENT", "PROCOPT", "SSPTR", "INDICES"}, diags_);
            if (dbType.isEmpty()) {
                if (!quiet) diags_.error(st.at, "SENSEG: no database PCB before it");
                senseg = DSSenSegment();
                errorsAtOpener_ = 0;  // an error was told: the SENFLDs under it stay quiet
                continue;
            }
            if (!require(st, s["NAME"], "NAME")) continue;
            if (++sensegCount > kMaxSensegs)
                return diags_.error(st.at, "SENSEG: a PSB holds at most " + std::to_string(kMaxSensegs) + " SENSEGs");
            std::string segName = text(s["NAME"], &s["NAME"]->value);
            if (sensegs.count(segName)) {
                diags_.error(s["NAME"]->value.at, "SENSEG NAME: " + segName + " is sensitive twice in PCB " + pcbName);
                continue;
            }
            _ADObject* target = segmentNamed("SENSEG", s["NAME"], &s["NAME"]->value, dbdName);
            if (!target) continue;
            std::string qual = pcbName.empty() ? name + ".PCB" + std::to_string(pcbNumber) : pcbName;
            auto sense = obtain<DSSenSegment>("DSSenSegment", qual + "." + segName);
            sense->_set_strSensegName(segName.c_str(), omStore);
            if (const Operand* po = s["PROCOPT"]) sense->_set_procoptSENSEG(text(po, &po->value).c_str(), omStore);
            // SSPTR=((n,R|U),...): subset pointer n is R (retrieve) or U (update).
            if (const Operand* sp = s["SSPTR"]) {
                const Value& v = sp->value;
                std::vector<const Value*> list;
                if (v.kind == Value::List && !v.items.empty() && v.items[0].kind == Value::List)
                    for (const Value& i : v.items) list.push_back(&i);
                else
                    list.push_back(&v);
                void (_DSSenSegment::*setters[])(char, omSetProcessing) = {
                    &_DSSenSegment::_set_subsetPointer1, &_DSSenSegment::_set_subsetPointer2,
                    &_DSSenSegment::_set_subsetPointer3, &_DSSenSegment::_set_subsetPointer4,
                    &_DSSenSegment::_set_subsetPointer5, &_DSSenSegment::_set_subsetPointer6,
                    &_DSSenSegment::_set_subsetPointer7, &_DSSenSegment::_set_subsetPointer8};
                for (const Value* e : list) {
                    auto n = number("SENSEG", sp, e->item(0), 1, 8);
                    std::string mode = text(sp, e->item(1));
                    if (!n) continue;
                    if (mode.size() != 1) {
                        diags_.error(e->at, "SENSEG SSPTR: (pointer,R|U) is expected");
                        continue;
                    }
                    (sense.operator->()->*setters[*n - 1])(mode[0], omStore);
                }
            }
            guarded(st.at, "SENSEG", [&] {
                link<DSHasSensitive>(&dbType, &sense);
                DSSegment seg(static_cast<_DSSegment*>(target));
                link<DSMapsTo>(&sense, &seg);
                std::string parentName = s["PARENT"] ? text(s["PARENT"], &s["PARENT"]->value) : std::string();
                if (!parentName.empty() && parentName != "0") {
                    auto it = sensegs.find(parentName);
                    if (it == sensegs.end())
                        return diags_.error(s["PARENT"]->value.at,
                                            "SENSEG PARENT: no SENSEG " + parentName + " before it in this PCB");
                    link<DSHasParentSenseg>(&sense, &it->second);
                }
                if (const Operand* ind = s["INDICES"])
                    for (std::size_t i = 0; i < ind->value.size(); ++i) {
                        _ADObject* idxDbd = dbdNamed("SENSEG", ind, ind->value.item(i));
                        _ADObject* idx = idxDbd ? accessOf(idxDbd) : nullptr;
                        if (!idxDbd) continue;
                        if (!idx || !idx->isKindOf("DSDBDindex")) {
                            diags_.error(ind->value.item(i)->at,
                                         "SENSEG INDICES: DBD " + ind->value.item(i)->text + " is not an index DBD");
                            continue;
                        }
                        auto index = as<DSDBDindex>(idx);
                        link<DSIndexedBy>(&sense, &index);
                    }
            });
            sensegs.emplace(segName, sense);
            senseg = sense;
            sensegName = segName;
        } else if (kind == Op::Senfld) {
            Operands f(st, {"NAME", "START", "REPL"}, diags_);
            if (senseg.isEmpty()) {
                if (!openerFailed()) diags_.error(st.at, "SENFLD: no SENSEG before it");
                continue;
            }
            if (!require(st, f["NAME"], "NAME")) continue;
            if (++senfldCount > kMaxSenflds)
                return diags_.error(st.at, "SENFLD: a PSB holds at most " + std::to_string(kMaxSenflds) + " SENFLDs");
            std::string fieldName = text(f["NAME"], &f["NAME"]->value);
            DSSegment* target = senseg->_getFirst_targetSegment();
            _ADObject* field = target ? fieldNamed("SENFLD", f["NAME"], &f["NAME"]->value, target->impl()) : nullptr;
            if (!field) continue;
            std::string qual = pcbName.empty() ? name + ".PCB" + std::to_string(pcbNumber) : pcbName;
            auto senfld = obtain<DSSenField>("DSSenField", qual + "." + sensegName + "." + fieldName);
            if (senfld->_get_sourceSENSEG()->count() > 0) {
                diags_.error(f["NAME"]->value.at,
                             "SENFLD NAME: " + fieldName + " is sensitive twice in SENSEG " + sensegName);
                continue;
            }
            if (const Operand* s = f["START"])
                if (auto n = number("SENFLD", s, &s->value, 1, 65535))
                    senfld->_set_startPosition(static_cast<unsigned short>(*n), omStore);
            if (auto v = yesNo("SENFLD", f["REPL"])) senfld->_set_replace(*v, omStore);
            guarded(st.at, "SENFLD", [&] {
                link<DSUsesSENFLD>(&senseg, &senfld);
                auto fld = as<DSField>(field);
                link<DSUsedAsSENFLD>(&senfld, &fld);
            });
        }
        if (diags_.full()) return;
    }
}

// ---------------------------------------------------------------------------

void Loader::undo() {
    for (auto it = madeLinks_.rbegin(); it != madeLinks_.rend(); ++it) (*it)->markDeleted(nullptr, 0);
    for (auto it = made_.rbegin(); it != made_.rend(); ++it) (*it)->markDeleted(nullptr, 0);
    // Objects the load made may still hold each other through roles the undone
    // links left; drop those handles so every made object goes.
    std::vector<ADObject> held;
    for (ADObject& o : made_) o->dropReferences(held);
    held.clear();
    madeLinks_.clear();
    made_.clear();
    places_.clear();
    loadedDbds_.clear();
    loadedPsbs_.clear();
}

void Loader::keep(LoadResult& result, const std::vector<std::string>& files) {
    result.dbds = std::move(loadedDbds_);
    result.psbs = std::move(loadedPsbs_);
    result.files = files;
    // A sorted list: one allocation and a sort cost less than a hash table
    // of tens of thousands of entries, and a lookup is a binary search.
    result.places.reserve(places_.size());
    for (const auto& [object, at] : places_)
        result.places.emplace_back(object, Place{static_cast<int>(at.file - files.data()), at.line, at.column});
    std::sort(result.places.begin(), result.places.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    places_.clear();
    madeLinks_.clear();
    made_.clear();
}

}  // namespace

LoadResult loadDecks(const std::vector<Deck>& decks, const char* version) {
    Diagnostics diags;
    LoadResult result;
    // The statements refer to their file names; both live until the load ends.
    std::vector<std::string> names;
    names.reserve(decks.size());
    std::vector<std::vector<Statement>> statements;
    statements.reserve(decks.size());
    for (const Deck& d : decks) {
        names.push_back(d.name);
        statements.push_back(readStatements(names.back(), d.bytes, diags));
    }
    {
        Loader loader(version ? version : kDeckVersion, diags);
        for (std::size_t i = 0; i < decks.size() && !diags.full(); ++i) loader.readDeck(names[i], statements[i]);
        loader.resolve();
        if (diags.hasErrors())
            loader.undo();
        else
            loader.keep(result, names);
    }
    result.diagnostics = diags.take();
    return result;
}

LoadResult loadDeckFiles(const std::vector<std::string>& paths, const char* version) {
    std::vector<Deck> decks;
    LoadResult failed;
    for (const std::string& path : paths) {
        auto refuse = [&](const std::string& why) {
            failed.diagnostics.push_back({path, 0, 0, Severity::Error, "cannot read the deck: " + why});
        };
        std::error_code ec;
        if (std::filesystem::is_directory(path, ec)) {
            refuse("it is a folder");
            continue;
        }
        errno = 0;
        std::ifstream in(path, std::ios::binary);
        if (!in) {
            refuse(errno ? std::strerror(errno) : "it cannot be opened");
            continue;
        }
        std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        if (in.bad()) {
            refuse("reading failed");
            continue;
        }
        decks.push_back({path, std::move(bytes)});
    }
    if (!failed.diagnostics.empty()) return failed;
    return loadDecks(decks, version);
}

}  // namespace krsource
