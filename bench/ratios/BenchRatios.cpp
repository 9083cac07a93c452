// BenchRatios.cpp — reads the JSON of a benchmark run and prints, per benchmark,
// the median time (or the single run's, without repetitions); for every `X`
// beside an `X_Baseline`, the ratio of their medians; for every benchmark that
// counts bytes_per_object and field_bytes, that ratio. Arguments NAME=LIMIT
// after the file say which ratios have a target, and the line says whether it
// was met.
//   bench_ratios results.json BuildWorstCaseModel=2 LookupByIdentity=1.5
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

namespace {
struct Figure {
    double ns = 0;
    double bytes = 0, fieldBytes = 0;
    bool median = false;
};

double toNs(double t, const std::string& unit) {
    if (unit == "us") return t * 1e3;
    if (unit == "ms") return t * 1e6;
    if (unit == "s") return t * 1e9;
    return t;
}

std::string shown(double ns) {
    char buf[32];
    if (ns >= 1e6)
        std::snprintf(buf, sizeof buf, "%.2f ms", ns / 1e6);
    else if (ns >= 1e3)
        std::snprintf(buf, sizeof buf, "%.2f us", ns / 1e3);
    else
        std::snprintf(buf, sizeof buf, "%.1f ns", ns);
    return buf;
}
}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s RESULTS.json [NAME=LIMIT ...]\n", argv[0]);
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 2;
    }
    nlohmann::json results = nlohmann::json::parse(in);
    std::map<std::string, double> limits;
    for (int i = 2; i < argc; ++i) {
        std::string a = argv[i];
        auto eq = a.find('=');
        if (eq != std::string::npos) limits[a.substr(0, eq)] = std::atof(a.c_str() + eq + 1);
    }

    std::map<std::string, Figure> figures;
    for (const auto& b : results["benchmarks"]) {
        bool aggregate = b.value("run_type", "") == "aggregate";
        if (aggregate && b.value("aggregate_name", "") != "median") continue;
        // Pairs match on the name as registered, without "/arguments:...".
        std::string name = b.value("run_name", b.value("name", ""));
        name = name.substr(0, name.find('/'));
        Figure& f = figures[name];
        if (f.median && !aggregate) continue;
        f.median = aggregate;
        f.ns = toNs(b.value("real_time", 0.0), b.value("time_unit", "ns"));
        f.bytes = b.value("bytes_per_object", 0.0);
        f.fieldBytes = b.value("field_bytes", 0.0);
    }

    std::printf("%-40s %14s\n", "benchmark (median)", "time");
    for (const auto& [name, f] : figures) std::printf("%-40s %14s\n", name.c_str(), shown(f.ns).c_str());
    std::printf("\n%-28s %10s %12s %8s %8s\n", "ratio", "measured", "baseline", "ratio", "target");
    int missed = 0;
    auto line = [&](const std::string& name, const std::string& a, const std::string& b, double r) {
        auto lim = limits.find(name);
        std::string target = lim == limits.end() ? "" : (r <= lim->second ? "met " : "MISSED ");
        if (lim != limits.end()) {
            char buf[16];
            std::snprintf(buf, sizeof buf, "%.1fx", lim->second);
            target += buf;
            missed += r > lim->second;
        }
        std::printf("%-28s %10s %12s %7.2fx %s\n", name.c_str(), a.c_str(), b.c_str(), r, target.c_str());
    };
    for (const auto& [name, f] : figures) {
        auto base = figures.find(name + "_Baseline");
        if (base != figures.end() && base->second.ns > 0)
            line(name, shown(f.ns), shown(base->second.ns), f.ns / base->second.ns);
        if (f.bytes > 0 && f.fieldBytes > 0)
            line(name, std::to_string(static_cast<long>(f.bytes)) + " B",
                 std::to_string(static_cast<long>(f.fieldBytes)) + " B", f.bytes / f.fieldBytes);
    }
    std::printf("\n%d target(s) missed\n", missed);
    return 0;
}
