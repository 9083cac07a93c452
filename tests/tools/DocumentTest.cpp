// DocumentTest.cpp — the import end to end: every view's expansion over the
// sample, and the whole sample in any order of its documents (in one file or
// one by one), imports into an empty repository and exports again unchanged;
// hostile documents are refused at their place with the repository left
// exactly as it was, however far the import had come.
#include "import/ImportCheck.h"
#include <krmwtarn/sample/SampleModel.h>
#include <krmwtarn/views/EwswtarnViews.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>

using importcheck::snapshot;
using nlohmann::json;

namespace {
class Documents : public ::testing::Test {
protected:
    void SetUp() override { DLLView_init::initAll(); }
    void TearDown() override { DSRegistrar::releaseAll(); }

    static const json& sampleDoc(std::size_t i) { return importcheck::sampleDocuments().at(i); }
    static const json& viewDoc(const char* view) {
        for (int i = 0; i < ewswtarnViewCount; ++i)
            if (!std::strcmp(ewswtarnViews[i].name, view)) return importcheck::viewDocuments()[i];
        throw std::out_of_range(view);
    }

    // Expects the file refused at `where` (with `message`, when given) and the
    // repository exactly as it was.
    static void refused(const json& file, const std::string& where, const std::string& message = "") {
        std::vector<std::string> before = snapshot();
        try {
            viewdoc::importDocuments(file);
            ADD_FAILURE() << "accepted a document that should be refused at " << where;
        } catch (const viewdoc::DocumentError& e) {
            EXPECT_EQ(e.where(), where) << e.what();
            EXPECT_EQ(e.finding().text(),
                      (where.empty() ? "" : where + ": ") + "error: " + std::string(e.what()).substr(where.size() + 2))
                << e.what();
            if (!message.empty()) {
                EXPECT_EQ(std::string(e.what()), where + ": " + message);
            }
        }
        EXPECT_EQ(snapshot(), before);
    }

    // Imports a file and expects every document back from its root.
    static void roundTrip(const std::vector<json>& docs) {
        std::vector<ADObject> roots = viewdoc::importDocuments(importcheck::file(docs));
        ASSERT_EQ(roots.size(), docs.size());
        for (std::size_t i = 0; i < docs.size(); ++i)
            EXPECT_EQ(
                viewdoc::exportView(DLLViewType::find(docs[i]["view"].get<std::string>().c_str()), roots[i].impl()),
                docs[i])
                << "document " << i << " over " << docs[i]["root"]["@id"];
    }
};

// ---- every view, every order ---------------------------------------------------

class EveryView : public Documents, public ::testing::WithParamInterface<int> {};

TEST_P(EveryView, ExpansionOverTheSampleImportsIntoAnEmptyRepositoryAndExportsAgainUnchanged) {
    const EwswtarnView& v = ewswtarnViews[GetParam()];
    json doc;
    {
        sample::Model m = sample::build();
        _ADObject* root = sample::defaultRoot(m, v.rootClass);
        ASSERT_NE(root, nullptr) << "the sample has no " << v.rootClass;
        doc = viewdoc::exportView(*v.variable, root);
        m = sample::Model();
        DSRegistrar::releaseAll();
    }
    ASSERT_EQ(DSRegistrar::count(), 0u);
    std::unique_ptr<ADObject> root(viewdoc::importDocument(doc));
    EXPECT_EQ(viewdoc::exportView(*v.variable, root->impl()), doc);
}

INSTANTIATE_TEST_SUITE_P(Views, EveryView, ::testing::Range(0, ewswtarnViewCount),
                         [](const ::testing::TestParamInfo<int>& info) {
                             return std::string(ewswtarnViews[info.param].name);
                         });

// The sample's documents in the order of the given indexes.
std::vector<json> inOrder(const std::vector<int>& order) {
    std::vector<json> docs;
    for (int i : order) docs.push_back(importcheck::sampleDocuments().at(i));
    return docs;
}

const std::vector<int> kOrders[] = {
    {0, 1, 2, 3, 4, 5, 6, 7},  // as exported
    {1, 0, 2, 3, 4, 5, 6, 7},  // the HIDAM DBD's primary index before it
    {2, 0, 1, 3, 4, 5, 6, 7},  // its secondary index before it
    {7, 6, 5, 4, 3, 2, 1, 0},  // reversed: the PSB first
    {3, 2, 7, 1, 0, 6, 4, 5},
};

class EveryOrder : public Documents, public ::testing::WithParamInterface<std::vector<int>> {};

TEST_P(EveryOrder, SampleComesBackFromOneFile) { roundTrip(inOrder(GetParam())); }

TEST_P(EveryOrder, SampleComesBackFromOneDocumentAtATime) {
    std::vector<json> docs = inOrder(GetParam());
    std::vector<ADObject> roots;
    for (const json& doc : docs) roots.push_back(viewdoc::importDocuments(doc).front());
    for (std::size_t i = 0; i < docs.size(); ++i)
        EXPECT_EQ(viewdoc::exportView(DLLViewType::find(docs[i]["view"].get<std::string>().c_str()), roots[i].impl()),
                  docs[i])
            << "document " << i;
}

INSTANTIATE_TEST_SUITE_P(Orders, EveryOrder, ::testing::ValuesIn(kOrders));

TEST_F(Documents, ViewsWhoseLinksAreReachedBeforeTheirRoleComeBackInOrder) {
    // A segment's containing link reached first from another segment's logical
    // child, before the DBD's own array lists it.
    for (const char* view : {"CVQHIDAMDBDCOMPLEX", "CVQHDAMDBDCOMPLEX", "CVQDBDUSAGE", "CVRENAMEDBD"}) {
        roundTrip({viewDoc(view)});
        DSRegistrar::releaseAll();
    }
}

// ---- a refusal leaves nothing behind ---------------------------------------------

// Every place where a link is listed, with its far end moved to another version:
// the model refuses the link when it sets the link's target (2510).
TEST_F(Documents, LinkRefusedAtItsTargetLeavesTheRepositoryAsItWasWhereverItStands) {
    const json& hospital = sampleDoc(0);
    std::vector<json::json_pointer> links;
    std::function<void(const json&, const json::json_pointer&)> find = [&](const json& j,
                                                                           const json::json_pointer& at) {
        if (j.is_array()) {
            for (std::size_t i = 0; i < j.size(); ++i) {
                links.push_back(at / i);
                find(j[i], at / i);
            }
        } else if (j.is_object()) {
            for (auto it = j.begin(); it != j.end(); ++it) find(*it, at / it.key());
        }
    };
    find(hospital, json::json_pointer());
    ASSERT_GT(links.size(), 40u);
    int refusedByTheModel = 0;
    for (bool othersFirst : {false, true}) {
        if (othersFirst) roundTrip(inOrder({1, 2, 3, 7}));
        for (const json::json_pointer& at : links) {
            json doc = hospital;
            json& link = doc[at];
            for (const char* end : {"adTarget", "adSource"})
                if (link.contains(end)) link[end]["@version"] = "OTHER";
            std::vector<std::string> before = snapshot();
            try {
                viewdoc::importDocuments(doc);
                ADD_FAILURE() << at << ": accepted a link between two versions";
            } catch (const viewdoc::DocumentError& e) {
                refusedByTheModel += std::string(e.what()).find("different versions") != std::string::npos &&
                                     std::string(e.what()).find("(2510)") != std::string::npos;
            }
            ASSERT_EQ(snapshot(), before) << at;
        }
        // The corrected document is imported next.
        roundTrip({hospital});
        DSRegistrar::releaseAll();
    }
    EXPECT_GT(refusedByTheModel, 30);
}

// A link to an object that exists already, given by identity only.
json linkTo(const char* linkClass, const char* id, const char* end, const char* farClass, const char* farId) {
    return json{{"@class", linkClass},
                {"@id", id},
                {"@version", "SAMPLE"},
                {end, {{"@class", farClass}, {"@id", farId}, {"@version", "SAMPLE"}}}};
}

TEST_F(Documents, SegmentRefusedInASecondDBDLeavesTheRepositoryAsItWas) {
    // A second DBD with two segments of its own, as a document.
    json other;
    {
        DSDBD dbd("SAMPLE", "OTHERDBD", 1);
        for (const char* id : {"OTHERDBD.ONE", "OTHERDBD.TWO"}) {
            DSSegmentComplex segment("SAMPLE", id, 1);
            DSContainsSegment(&dbd, &segment, 1);
        }
        other = viewdoc::exportView(DLLViewType::find("CORVIAPOPULATEDBD"), dbd.impl());
        dbd = DSDBD();
        DSRegistrar::releaseAll();
    }
    // The sample made through the model; the second DBD is to contain one of
    // its segments too: the model refuses that link at its target.
    sample::Model m = sample::build();
    json hostile = other;
    hostile["root"]["segments"].push_back(
        linkTo("DSContainsSegment", "NEW3", "adTarget", "DSSegmentComplex", "HOSPDBD.WARD"));
    refused(hostile, "/root/segments/2",
            "the link is refused: this DSSegment belongs to another object already: a DSContainsSegment link gives it "
            "one owner only (2514)");
    // The corrected document is imported next.
    roundTrip({other});
    m = sample::Model();
}

// ---- roles: order, repetition, cardinality --------------------------------------

TEST_F(Documents, ArraysThatContradictEachOtherAreRefused) {
    json doc = viewDoc("CVQHIDAMDBDCOMPLEX");
    json swapped = doc;
    std::swap(swapped["root"]["segments"][0], swapped["root"]["segments"][1]);
    refused(importcheck::file({doc, swapped}), "/documents/1/root/segments/1",
            "this order of role 'segments' contradicts the one given at /documents/0/root/segments/1");
    // The fields of a segment keep the order they were made in.
    json fields = sampleDoc(0);
    json& patient = fields["/root/segments/2/adTarget/fields"_json_pointer];
    ASSERT_EQ(patient.size(), 2u);
    std::swap(patient[0], patient[1]);
    roundTrip({sampleDoc(0)});
    refused(fields, "/root/segments/2/adTarget/fields/1",
            "this order of role 'fields' contradicts the order the repository holds");
}

TEST_F(Documents, OrderedRoleTakesTheOrderOfALaterDocument) {
    // The logical DBD's document reaches two of the HIDAM DBD's segments, in
    // no particular order; the HIDAM DBD's own document orders all of them.
    roundTrip({sampleDoc(3)});
    roundTrip({sampleDoc(0)});
    json doc = viewDoc("CVQHIDAMDBDCOMPLEX");
    std::swap(doc["root"]["segments"][0], doc["root"]["segments"][1]);
    // Refused only when it is checked against the built graph, after the
    // segments changed places: they go back to their order.
    json incomplete = doc;
    incomplete["root"].erase("versionString");
    refused(incomplete, "/root/versionString",
            "the built graph does not give the document back: the graph has \"1.0\" here");
    roundTrip({doc});
}

TEST_F(Documents, LinkListedTwiceInARoleIsRefused) {
    json doc = sampleDoc(0);
    json& segments = doc["root"]["segments"];
    segments.insert(segments.begin() + 2, segments[1]);
    refused(doc, "/root/segments/2", "the link is listed twice in this role (also at /root/segments/1)");
}

TEST_F(Documents, SecondLinkInAOneToOneRoleIsRefused) {
    json doc = sampleDoc(0);
    doc["root"]["dliAccess"].push_back(
        linkTo("DSDefinedByAccess", "SECOND-ACCESS-LINK", "adTarget", "DSDBDhidam", "SECOND-ACCESS"));
    refused(
        doc, "/root/dliAccess/1",
        "role 'dliAccess' of DSDBD HOSPDBD holds one link; a second is given here (the first at /root/dliAccess/0)");
    roundTrip({sampleDoc(0)});
    json second = {{"view", "CORVIAPOPULATEDBD"},
                   {"root",
                    {{"@class", "DSDBD"},
                     {"@id", "HOSPDBD"},
                     {"@version", "SAMPLE"},
                     {"dliAccess", {doc["root"]["dliAccess"][1]}}}}};
    refused(second, "/root/dliAccess/0",
            "role 'dliAccess' of DSDBD HOSPDBD holds one link; a second is given here (the repository holds one)");
}

// ---- values ------------------------------------------------------------------------

struct ValueCase {
    const char* at;       // in the HIDAM DBD's document
    const char* value;    // JSON text
    const char* refusal;  // null: accepted
};

void PrintTo(const ValueCase& c, std::ostream* os) { *os << c.at << " = " << c.value; }

class Values : public Documents, public ::testing::WithParamInterface<ValueCase> {};

TEST_P(Values, AreStoredWhenTheyFitTheirTypeAndRefusedOtherwise) {
    const ValueCase& c = GetParam();
    json doc = sampleDoc(0);
    doc[json::json_pointer(c.at)] = json::parse(c.value);
    if (c.refusal) {
        refused(doc, c.at, c.refusal);
    } else {
        roundTrip({doc});
    }
}

constexpr const char* kShort = "/root/segments/0/adTarget/maximumLength";
constexpr const char* kUshort = "/root/basedPCBs/0/adSource/keyLength";
constexpr const char* kBoolean = "/root/dliAccess/0/adTarget/osAccess";
constexpr const char* kChar = "/root/segments/0/adTarget/deleteFlag";
constexpr const char* kString = "/root/versionString";

INSTANTIATE_TEST_SUITE_P(
    Ranges, Values,
    ::testing::Values(ValueCase{kShort, "32767", nullptr}, ValueCase{kShort, "-32768", nullptr},
                      ValueCase{kShort, "32768", "the value does not fit a short"},
                      ValueCase{kShort, "-32769", "the value does not fit a short"},
                      ValueCase{kShort, "18446744073709518848", "the value does not fit a short"},
                      ValueCase{kShort, "18446744073709551615", "the value does not fit a short"},
                      ValueCase{kShort, "1.5", "a short value is expected"}, ValueCase{kUshort, "65535", nullptr},
                      ValueCase{kUshort, "0", nullptr}, ValueCase{kUshort, "65536", "the value does not fit a ushort"},
                      ValueCase{kUshort, "-1", "the value does not fit a ushort"},
                      ValueCase{kUshort, "18446744073709551615", "the value does not fit a ushort"},
                      ValueCase{kBoolean, "2147483647", nullptr}, ValueCase{kBoolean, "-2147483648", nullptr},
                      ValueCase{kBoolean, "2147483648", "the value does not fit a boolean"},
                      ValueCase{kBoolean, "18446744073709551615", "the value does not fit a boolean"},
                      ValueCase{kBoolean, "true", "a boolean value is expected"}, ValueCase{kChar, "\"Y\"", nullptr},
                      ValueCase{kChar, "\"YN\"", "a char value is expected"},
                      ValueCase{kChar, "\"\\u0000\"", "a string holding a NUL character is refused"},
                      ValueCase{kChar, "65", "a char value is expected"},
                      ValueCase{kString, "\"1.0\\u0000X\"", "a string holding a NUL character is refused"},
                      ValueCase{kString, "null", nullptr}));

TEST_F(Documents, LongValuesFitFourBytes) {
    // The HDAM DBD's access carries the long attributes.
    json doc = sampleDoc(5);
    const json::json_pointer at("/root/dliAccess/0/adTarget/relativeBlockNumber");
    for (long long fits : {2147483647LL, -2147483648LL}) {
        doc[at] = fits;
        roundTrip({doc});
        DSRegistrar::releaseAll();
    }
    for (const char* text : {"2147483648", "-2147483649", "18446744073709551615", "9223372036854775807"}) {
        doc[at] = json::parse(text);
        refused(doc, at.to_string(), "the value does not fit a long");
    }
}

TEST_F(Documents, ObjectGivenTwiceWithDifferentValuesIsRefusedNamingBothPlaces) {
    json doc = sampleDoc(0);
    doc["/root/segments/0/adTarget/fields/0/adTarget/strFieldName"_json_pointer] = "OTHER";
    refused(doc, "/root/segments/0/adTarget/fields/0/adTarget/strFieldName",
            "another value for 'strFieldName' of this object is given at "
            "/root/dliAccess/0/adTarget/rootSequenceField/0/adTarget/strFieldName");
    std::vector<json> docs = importcheck::sampleDocuments();
    docs[7]["/root/listPCBs/0/adTarget/typeOfPCB/0/adTarget/keyLength"_json_pointer] = 21;
    refused(
        importcheck::file(docs), "/documents/7/root/listPCBs/0/adTarget/typeOfPCB/0/adTarget/keyLength",
        "another value for 'keyLength' of this object is given at /documents/0/root/basedPCBs/0/adSource/keyLength");
}

// ---- identities ----------------------------------------------------------------------

struct IdentityCase {
    const char* at;  // in the HIDAM DBD's document
    const char* key;
    std::string value;
    const char* refusal;
};

void PrintTo(const IdentityCase& c, std::ostream* os) { *os << c.at << "/" << c.key; }

class Identities : public Documents, public ::testing::WithParamInterface<IdentityCase> {};

TEST_P(Identities, WithNulOrTheDefaultIDAreRefusedAtTheirPlace) {
    const IdentityCase& c = GetParam();
    json doc = sampleDoc(0);
    doc[json::json_pointer(c.at)][c.key] = c.value;
    std::string where = viewdoc::pointer(c.at, c.key);
    refused(doc, where, c.refusal);
    // The same way when the repository already holds objects of that identity.
    roundTrip({sampleDoc(1)});
    refused(doc, where, c.refusal);
}

const std::string kNul = "a string holding a NUL character is refused";
const std::string kDefault = "the default object ID '*new*' names no object; an object is given by its own identity";

INSTANTIATE_TEST_SUITE_P(Refused, Identities,
                         ::testing::Values(IdentityCase{"/root/segments/2", "@id", "*new*", kDefault.c_str()},
                                           IdentityCase{"/root/segments/2/adTarget", "@id", "*new*", kDefault.c_str()},
                                           IdentityCase{"/root", "@id", "*new*", kDefault.c_str()},
                                           IdentityCase{"/root/segments/0/adTarget", "@id",
                                                        std::string("HOSPDBD.HOSPITAL\0X", 18), kNul.c_str()},
                                           IdentityCase{"/root/segments/0", "@version", std::string("SAMPLE\0X", 8),
                                                        kNul.c_str()},
                                           IdentityCase{"/root/segments/0", "@class",
                                                        std::string("DSContainsSegment\0X", 19), kNul.c_str()}));

TEST_F(Documents, ViewNameWithNulIsRefused) {
    json doc = sampleDoc(0);
    doc["view"] = std::string("CORVIAPOPULATEDBD\0X", 19);
    refused(doc, "/view", kNul);
}

// ---- unknown input, places -------------------------------------------------------

TEST_F(Documents, UnknownKeysAreRefusedAtAnEscapedPointer) {
    json doc = sampleDoc(0);
    doc["extra"] = 1;
    refused(doc, "/extra", "a document holds only 'view' and 'root'");
    refused(json{{"documents", {sampleDoc(0)}}, {"x", 1}}, "/x", "beside 'documents' a file holds nothing");

    doc = sampleDoc(0);
    doc["root"]["@colour"] = "blue";
    refused(doc, "/root/@colour", "unknown key '@colour'; an object carries @class, @id and @version");

    doc = sampleDoc(0);
    doc["root"]["a/b"] = 1;
    refused(doc, "/root/a~1b", "unknown attribute 'a/b' for DSDBD");
    doc = sampleDoc(0);
    doc["root"]["~x"] = 1;
    refused(doc, "/root/~0x", "unknown attribute '~x' for DSDBD");
    EXPECT_EQ(viewdoc::pointer("/a", "~/~1"), "/a/~0~1~01");
}

TEST_F(Documents, MalformedDocumentsAreRefusedWhereTheyGoWrong) {
    json dbd = sampleDoc(0);
    refused(json::array(), "", "a document is an object");
    refused(json{{"view", "NOSUCHVIEW"}, {"root", dbd["root"]}}, "/view", "no view named 'NOSUCHVIEW'");

    json badClass = dbd;
    badClass["root"]["@class"] = "DSNoSuchClass";
    refused(badClass, "/root/@class", "unknown class 'DSNoSuchClass'");

    json badAttribute = dbd;
    badAttribute["root"]["colour"] = "blue";
    refused(badAttribute, "/root/colour", "unknown attribute 'colour' for DSDBD");

    json badType = dbd;
    badType["root"]["versionString"] = 12;
    refused(badType, "/root/versionString", "a string value is expected");

    json badRole = dbd;
    badRole["root"]["segments"][0]["@class"] = "DSHasField";
    refused(badRole, "/root/segments/0/@class", "'DSHasField' does not stand on role 'segments'");

    // A link whose far end does not fit: the segment replaced by a field.
    json badEnd = dbd;
    badEnd["root"]["segments"][0]["adTarget"] = json{{"@class", "DSField"}, {"@id", "X"}, {"@version", "SAMPLE"}};
    refused(badEnd, "/root/segments/0/adTarget/@class",
            "the link's end is a DSField, not one of DSSegmentLogical, DSSegmentDEDB, DSSegmentComplex, DSSegment");

    // A link given without its far end anywhere.
    json noEnd = dbd;
    noEnd["root"]["dliAccess"][0].erase("adTarget");
    refused(noEnd, "/root/dliAccess/0", "the DSDefinedByAccess link is given without its target");
}
}  // namespace
