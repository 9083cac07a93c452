// ScaleTable.cpp — turns the JSON of a scale run into what people read: a
// table of the cost per object of each operation at each size, with the ratio
// of the largest size to the smallest, and a data file that gnuplot draws
// (one block per operation: objects, nanoseconds per object).
//   scale_table results.json table.md curves.dat
#include <nlohmann/json.hpp>

#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace {
struct Point {
    double objects = 0;
    double ns = 0;  // per object
};
}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: scale_table RESULTS.json TABLE.md CURVES.dat\n");
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::fprintf(stderr, "scale_table: cannot read %s\n", argv[1]);
        return 1;
    }
    nlohmann::json run;
    try {
        run = nlohmann::json::parse(in);
    } catch (const nlohmann::json::exception& e) {
        std::fprintf(stderr, "scale_table: %s is not a benchmark result: %s\n", argv[1], e.what());
        return 1;
    }
    // Operations in the order of the run; each one's sizes in order.
    std::vector<std::string> order;
    std::map<std::string, std::vector<Point>> curves;
    for (const auto& b : run.value("benchmarks", nlohmann::json::array())) {
        if (!b.contains("per_object") || !b.contains("objects")) continue;
        std::string name = b.value("name", "");
        std::string op = name.substr(0, name.find('/'));
        if (!curves.count(op)) order.push_back(op);
        curves[op].push_back({b["objects"].get<double>(), b["per_object"].get<double>() * 1e9});
    }
    if (order.empty()) {
        std::fprintf(stderr, "scale_table: %s holds no per-object figures\n", argv[1]);
        return 1;
    }
    std::ofstream table(argv[2]), data(argv[3]);
    std::vector<Point>& first = curves[order.front()];
    table << "| operation |";
    for (const Point& p : first) table << " " << static_cast<long>(p.objects) << " objects |";
    table << " largest / smallest |\n|---|";
    for (std::size_t i = 0; i < first.size(); ++i) table << "---:|";
    table << "---:|\n";
    for (const std::string& op : order) {
        const std::vector<Point>& c = curves[op];
        table << "| " << op << " |";
        char cell[64];
        for (const Point& p : c) {
            std::snprintf(cell, sizeof cell, " %.0f ns |", p.ns);
            table << cell;
        }
        std::snprintf(cell, sizeof cell, " %.2f× |\n", c.back().ns / c.front().ns);
        table << cell;
        data << op << " ns\n";  // the block's title row
        for (const Point& p : c) data << p.objects << " " << p.ns << "\n";
        data << "\n\n";
    }
    if (!table || !data) {
        std::fprintf(stderr, "scale_table: cannot write %s or %s\n", argv[2], argv[3]);
        return 1;
    }
    return 0;
}
