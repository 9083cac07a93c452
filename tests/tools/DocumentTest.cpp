// DocumentTest.cpp — the main job end to end: every view expands over the
// sample; the whole sample survives export, import into an empty repository
// and export again unchanged; malformed documents are refused at their place
// and leave the repository as it was.
#include "tools/json/ViewDocument.h"
#include "tools/sample/SampleModel.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

using nlohmann::json;

namespace {
class Documents : public ::testing::Test {
protected:
    void SetUp() override { DLLView_init::initAll(); }
    void TearDown() override { DSRegistrar::releaseAll(); }

    static json exportSample(const sample::Model& m) {
        json docs = json::array();
        for (const DSDBD* d : {&m.hospital, &m.hospIndex, &m.nameIndex, &m.logical, &m.dedb, &m.hdam, &m.msdb})
            docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPOPULATEDBD"), d->impl()));
        docs.push_back(viewdoc::exportView(DLLViewType::find("CORVIAPSB"), m.psb.impl()));
        return docs;
    }

    static json sampleDocuments() {
        sample::Model m = sample::build();
        json docs = exportSample(m);
        m = sample::Model();
        DSRegistrar::releaseAll();
        return docs;
    }

    // Expects the document refused at `where`, with the repository unchanged.
    static void refused(const json& doc, const std::string& where) {
        std::size_t before = DSRegistrar::count();
        try {
            delete viewdoc::importDocument(doc);
            ADD_FAILURE() << "accepted a document that should be refused at " << where;
        } catch (const viewdoc::DocumentError& e) {
            EXPECT_EQ(e.where(), where) << e.what();
        }
        EXPECT_EQ(DSRegistrar::count(), before);
    }
};
}  // namespace

TEST_F(Documents, EveryViewExpandsOverTheSample) {
    sample::Model m = sample::build();
    ASSERT_EQ(DLLViewType::all().size() >= 38, true);
    for (DLLViewType* view : DLLViewType::all()) {
        DLLViewList* list = view->_get_adViewList();
        ASSERT_NE(list, nullptr) << view->name();
        _ADObject* root = nullptr;
        const char* cls = list->className;
        if (!std::strcmp(cls, "DSDBD")) root = m.hospital.impl();
        else if (!std::strcmp(cls, "DSPSB")) root = m.psb.impl();
        else if (!std::strcmp(cls, "DSPCB")) root = m.hospitalPcb.impl();
        else if (!std::strcmp(cls, "DSDataStructureAlias")) root = m.wardText.impl();
        else continue;
        DLLViewNode node = DLLView_expand(view, root);
        EXPECT_EQ(node.list, list) << view->name();
        EXPECT_GE(DLLView_nodeCount(node), 1u) << view->name();
    }
    DLLViewNode dbd = DLLView_expand(DLLViewType::find("CORVIADBD"), m.hospital.impl());
    EXPECT_GT(DLLView_nodeCount(dbd), 20u);
    m = sample::Model();
}

TEST_F(Documents, SampleRoundTripsThroughAnEmptyRepository) {
    json first = sampleDocuments();
    ASSERT_EQ(DSRegistrar::count(), 0u);
    std::vector<std::unique_ptr<ADObject>> roots;
    for (const json& doc : first) roots.emplace_back(viewdoc::importDocument(doc));
    json second = json::array();
    for (size_t i = 0; i < roots.size(); ++i)
        second.push_back(viewdoc::exportView(DLLViewType::find(first[i]["view"].get<std::string>().c_str()), roots[i]->impl()));
    EXPECT_EQ(first, second);
    EXPECT_GT(first.dump().size(), 10000u);
}

TEST_F(Documents, MalformedDocumentsAreRefusedWhereTheyGoWrong) {
    json docs = sampleDocuments();
    json dbd = docs[0];
    refused(json::array(), "");
    refused(json{{"view", "NOSUCHVIEW"}, {"root", dbd["root"]}}, "/view");

    json badClass = dbd;
    badClass["root"]["@class"] = "DSNoSuchClass";
    refused(badClass, "/root/@class");

    json badAttribute = dbd;
    badAttribute["root"]["colour"] = "blue";
    refused(badAttribute, "/root/colour");

    json badType = dbd;
    badType["root"]["versionString"] = 12;
    refused(badType, "/root/versionString");

    json badRole = dbd;
    ASSERT_TRUE(badRole["root"]["segments"].is_array());
    badRole["root"]["segments"][0]["@class"] = "DSHasField";
    refused(badRole, "/root/segments/0/@class");

    // A link whose far end does not fit: the segment replaced by a field.
    json badEnd = dbd;
    json& end = badEnd["root"]["segments"][0]["adTarget"];
    end = json{{"@class", "DSField"}, {"@id", "X"}, {"@version", "SAMPLE"}};
    refused(badEnd, "/root/segments/0/adTarget/@class");

    // A document the model refuses while building (a segment in two DBDs):
    // everything made for it is undone.
    ASSERT_EQ(DSRegistrar::count(), 0u);
    std::unique_ptr<ADObject> kept(viewdoc::importDocument(dbd));
    std::size_t before = DSRegistrar::count();
    json twice = dbd;
    twice["root"]["@id"] = "OTHERDBD";
    try {
        delete viewdoc::importDocument(twice);
        ADD_FAILURE() << "a segment was accepted into a second DBD";
    } catch (const viewdoc::DocumentError& e) {
        EXPECT_EQ(e.where().rfind("/root/", 0), 0u) << e.what();
    }
    EXPECT_EQ(DSRegistrar::count(), before);
}
