// Sql.cpp — what every connection shares: rows written through a prepared
// INSERT, one statement execution per row (each failure names its row), and
// the cache of prepared statements.
#include <krmwtarn/store/Sql.h>

namespace krstore {
namespace {

class InsertWriter final : public RowWriter {
public:
    explicit InsertWriter(std::unique_ptr<Statement> insert) : insert_(std::move(insert)) {}
    void bindNull(int i) override { insert_->bindNull(i); }
    void bindInt(int i, long long value) override { insert_->bindInt(i, value); }
    void bindText(int i, std::string_view value) override { insert_->bindText(i, value); }
    void endRow() override {
        insert_->step();
        insert_->reset();
    }
    void finish() override {}
    bool rowByRow() const override { return true; }

private:
    std::unique_ptr<Statement> insert_;
};

}  // namespace

std::unique_ptr<RowWriter> Connection::writeRows(const std::string& table, const std::vector<std::string>& columns,
                                                 bool) {
    std::string names, params;
    for (const std::string& c : columns) {
        names += (names.empty() ? "" : ", ") + c;
        params += params.empty() ? "?" : ", ?";
    }
    return std::make_unique<InsertWriter>(prepare("INSERT INTO " + table + " (" + names + ") VALUES (" + params + ")"));
}

Statement& StatementCache::operator()(const std::string& sql) {
    std::unique_ptr<Statement>& s = statements_[sql];
    if (!s) s = db_.prepare(sql);
    s->reset();
    return *s;
}

}  // namespace krstore
