#include "ZKBenchReport.h"

#include <gtest/gtest.h>

using namespace ZKBenchReport;

// Readable failure messages.
void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace {

Measurement measured(const QString& suite, const QString& runName, double cpuNs,
                     double realNs = 0) {
    Measurement m;
    m.suite = suite;
    m.runName = runName;
    m.name = parseRunName(runName);
    m.cpuNs = cpuNs;
    m.realNs = realNs;
    return m;
}

Measurement withBytes(Measurement m, double bytes, double elements) {
    m.hasBytes = true;
    m.bytes = bytes;
    m.elements = elements;
    return m;
}

} // namespace

TEST(ZKBenchReport, RunNamesSplitIntoImplementationOperationAndArguments) {
    BenchName n = parseRunName(QStringLiteral("BM_ZK_Count/1000000"));
    EXPECT_TRUE(n.valid);
    EXPECT_EQ(n.impl, QStringLiteral("ZK"));
    EXPECT_EQ(n.operation, QStringLiteral("Count"));
    EXPECT_EQ(n.args, QStringLiteral("1000000"));

    // Run options appended by Google Benchmark are not arguments.
    n = parseRunName(QStringLiteral("Boost_Walk<Sparse>/1000000/min_time:0.050/repeats:3/"
                                    "real_time/process_time/threads:2/iterations:7"));
    EXPECT_EQ(n.impl, QStringLiteral("Boost"));
    EXPECT_EQ(n.operation, QStringLiteral("Walk<Sparse>"));
    EXPECT_EQ(n.args, QStringLiteral("1000000"));

    // The implementation ends at the first underscore outside the template
    // arguments; several arguments keep their order.
    n = parseRunName(QStringLiteral("ZKBinaryFile_Write_Read<Mode_A>/64/8"));
    EXPECT_EQ(n.impl, QStringLiteral("ZKBinaryFile"));
    EXPECT_EQ(n.operation, QStringLiteral("Write_Read<Mode_A>"));
    EXPECT_EQ(n.args, QStringLiteral("64/8"));

    for (const char* bad : {"Getline", "BM_Getline", "_Count", "ZK_", "ZK_<int>", ""})
        EXPECT_FALSE(parseRunName(QString::fromLatin1(bad)).valid) << bad;

    EXPECT_TRUE(isLibraryImpl(QStringLiteral("ZKImage")));
    EXPECT_FALSE(isLibraryImpl(QStringLiteral("QImage")));
    EXPECT_FALSE(isLibraryImpl(QStringLiteral("Zk")));
}

TEST(ZKBenchReport, JsonPrefersMediansAndAveragesPlainRuns) {
    const QByteArray json = R"({
      "context": {"executable": "/x/build/bench/zk_containers_bench"},
      "benchmarks": [
        {"name": "ZK_Count/1000_mean", "run_name": "ZK_Count/1000", "run_type": "aggregate",
         "aggregate_name": "mean", "real_time": 9, "cpu_time": 9, "time_unit": "us"},
        {"name": "ZK_Count/1000_median", "run_name": "ZK_Count/1000", "run_type": "aggregate",
         "aggregate_name": "median", "real_time": 3, "cpu_time": 2, "time_unit": "us",
         "bytes": 150, "elements": 1000, "label": "dense"},
        {"name": "ZK_Count/1000_stddev", "run_name": "ZK_Count/1000", "run_type": "aggregate",
         "aggregate_name": "stddev", "real_time": 1, "cpu_time": 1, "time_unit": "us"},
        {"name": "Boost_Count/1000", "run_name": "Boost_Count/1000", "run_type": "iteration",
         "real_time": 2, "cpu_time": 1, "time_unit": "ms"},
        {"name": "Boost_Count/1000", "run_name": "Boost_Count/1000", "run_type": "iteration",
         "real_time": 4, "cpu_time": 3, "time_unit": "ms"},
        {"name": "VecBool_Count/1000", "run_type": "iteration", "error_occurred": true,
         "error_message": "too big"},
        {"name": "Old_Style", "real_time": 5, "cpu_time": 5, "time_unit": "s"}
      ]})";
    QVector<Measurement> out;
    QString error;
    ASSERT_TRUE(readBenchmarkJson(json, out, &error)) << error.toStdString();
    ASSERT_EQ(out.size(), 4);

    EXPECT_EQ(out[0].suite, QStringLiteral("containers"));
    EXPECT_EQ(out[0].runName, QStringLiteral("ZK_Count/1000"));
    EXPECT_DOUBLE_EQ(out[0].cpuNs, 2000);
    EXPECT_DOUBLE_EQ(out[0].realNs, 3000);
    EXPECT_TRUE(out[0].hasBytes);
    EXPECT_DOUBLE_EQ(out[0].bytes, 150);
    EXPECT_DOUBLE_EQ(out[0].elements, 1000);
    EXPECT_EQ(out[0].label, QStringLiteral("dense"));

    EXPECT_DOUBLE_EQ(out[1].cpuNs, 2e6);
    EXPECT_DOUBLE_EQ(out[1].realNs, 3e6);
    EXPECT_FALSE(out[1].hasBytes);

    EXPECT_EQ(out[2].error, QStringLiteral("too big"));
    EXPECT_DOUBLE_EQ(out[3].cpuNs, 5e9);

    // Appends to what the vector holds; rejects what is not a benchmark file.
    EXPECT_TRUE(readBenchmarkJson(R"({"benchmarks": []})", out, &error));
    EXPECT_EQ(out.size(), 4);
    EXPECT_FALSE(readBenchmarkJson("{\"benchmarks\": [", out, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_FALSE(readBenchmarkJson(R"({"context": {}})", out, &error));
    EXPECT_FALSE(readBenchmarkJson("[1, 2]", out, nullptr));
    EXPECT_EQ(out.size(), 4);
}

TEST(ZKBenchReport, JsonRunsComeOutInRegistrationOrder) {
    // As written by --benchmark_enable_random_interleaving: shuffled runs.
    const QByteArray json = R"({"benchmarks": [
        {"name": "Boost_Walk/8", "family_index": 1, "per_family_instance_index": 1},
        {"name": "ZK_Walk/8", "family_index": 0, "per_family_instance_index": 1},
        {"name": "Untagged_Walk"},
        {"name": "Boost_Walk/4", "family_index": 1, "per_family_instance_index": 0},
        {"name": "ZK_Walk/4", "family_index": 0, "per_family_instance_index": 0},
        {"name": "ZK_Walk/8", "family_index": 0, "per_family_instance_index": 1}
      ]})";
    QVector<Measurement> out;
    ASSERT_TRUE(readBenchmarkJson(json, out, nullptr));
    QStringList names;
    for (const Measurement& m : out)
        names.push_back(m.runName);
    EXPECT_EQ(names, QStringList({"ZK_Walk/4", "ZK_Walk/8", "Boost_Walk/4", "Boost_Walk/8",
                                  "Untagged_Walk"}));
}

TEST(ZKBenchReport, LibraryRunsPairWithEveryPeerOfTheSameOperationAndSize) {
    const QVector<Measurement> runs = {
        measured("containers", "ZK_Count/1000", 50, 500),
        measured("containers", "Boost_Count/1000", 100, 250),
        measured("containers", "VecBool_Count/1000", 25, 1000),
        measured("containers", "ZK_Count/2000", 10), // no peer at this size
        measured("maths", "Eigen_Count/1000", 1),    // another program
        measured("maths", "Eigen_Inverse4d", 40),    // no library run
        measured("maths", "ZKJacobi_Inverse4d", 20),
        measured("maths", "Stdio_Inverse4d", 0), // zero: no ratio
        measured("disk", "BM_Getline", 3),       // not the convention
    };
    Report cpu = buildReport(runs, TimeKind::Cpu);
    ASSERT_EQ(cpu.timeRows.size(), 4);
    EXPECT_EQ(cpu.timeRows[0].peer, QStringLiteral("Boost"));
    EXPECT_DOUBLE_EQ(cpu.timeRows[0].ratio, 0.5);
    EXPECT_EQ(cpu.timeRows[1].peer, QStringLiteral("VecBool"));
    EXPECT_DOUBLE_EQ(cpu.timeRows[1].ratio, 2.0);
    EXPECT_EQ(cpu.timeRows[1].size, QStringLiteral("10^3"));
    EXPECT_EQ(cpu.timeRows[2].libImpl, QStringLiteral("ZKJacobi"));
    EXPECT_EQ(cpu.timeRows[2].peer, QStringLiteral("Eigen"));
    EXPECT_DOUBLE_EQ(cpu.timeRows[2].ratio, 0.5);
    EXPECT_DOUBLE_EQ(cpu.timeRows[3].ratio, 0.0);
    EXPECT_EQ(cpu.unpaired, QStringList({"containers: ZK_Count/2000", "maths: Eigen_Count/1000"}));
    EXPECT_EQ(cpu.badNames, QStringList({"disk: BM_Getline"}));
    EXPECT_TRUE(cpu.memoryRows.isEmpty());

    const Report real = buildReport(runs, TimeKind::Real);
    EXPECT_DOUBLE_EQ(real.timeRows[0].ratio, 2.0);
    EXPECT_DOUBLE_EQ(real.timeRows[1].ratio, 0.5);
}

TEST(ZKBenchReport, MemoryRowsNeedBytesOnBothSidesAndFailedRunsAreListed) {
    Measurement failed = measured("image", "ZKImage_Init/64", 1);
    failed.error = QStringLiteral("wrong byte count");
    Measurement labelled = withBytes(measured("containers", "ZK_Hold/1000", 10), 149, 1000);
    labelled.label = QStringLiteral("clear");
    const QVector<Measurement> runs = {
        labelled,
        withBytes(measured("containers", "VecBool_Hold/1000", 20), 168, 1000),
        measured("containers", "Boost_Hold/1000", 5),
        failed,
        measured("image", "QImage_Init/64", 1),
    };
    const Report r = buildReport(runs, TimeKind::Cpu);
    ASSERT_EQ(r.timeRows.size(), 2);
    EXPECT_EQ(r.timeRows[0].size, QStringLiteral("10^3 clear"));
    ASSERT_EQ(r.memoryRows.size(), 1);
    EXPECT_EQ(r.memoryRows[0].peer, QStringLiteral("VecBool"));
    EXPECT_DOUBLE_EQ(r.memoryRows[0].libValue, 149);
    EXPECT_DOUBLE_EQ(r.memoryRows[0].ratio, 149.0 / 168.0);
    EXPECT_DOUBLE_EQ(r.memoryRows[0].libPerElement, 0.149);
    EXPECT_EQ(r.errors, QStringList({"image: ZKImage_Init/64: wrong byte count"}));
    EXPECT_EQ(r.unpaired, QStringList({"image: QImage_Init/64"}));

    const QString text = renderReport(r, TimeKind::Cpu);
    EXPECT_TRUE(text.contains(QStringLiteral("| containers: Hold | 10^3 clear |")));
    EXPECT_TRUE(text.contains(QStringLiteral("149 B (0.149 B/element)")));
    EXPECT_TRUE(text.contains(QStringLiteral("image: ZKImage_Init/64: wrong byte count")));
    // Every line of the time table has the same length: the columns are padded.
    const QStringList lines = text.left(text.indexOf(QStringLiteral("\nMemory"))).split('\n');
    int tableLines = 0;
    for (const QString& line : lines)
        if (line.startsWith(QLatin1Char('|'))) {
            ++tableLines;
            EXPECT_EQ(line.size(), lines[2].size()) << line.toStdString();
        }
    EXPECT_EQ(tableLines, 4); // header, rule, two rows
}

TEST(ZKBenchReport, SizesTimesAndBytesAreFormattedForReading) {
    EXPECT_EQ(formatSize(QStringLiteral("1000000")), QStringLiteral("10^6"));
    EXPECT_EQ(formatSize(QStringLiteral("100000000")), QStringLiteral("10^8"));
    EXPECT_EQ(formatSize(QStringLiteral("64/1000")), QStringLiteral("64/10^3"));
    for (const char* kept : {"1500", "999", "100", "2048x2048", ""})
        EXPECT_EQ(formatSize(QString::fromLatin1(kept)), QString::fromLatin1(kept));

    EXPECT_EQ(formatTime(812.3), QStringLiteral("812 ns"));
    EXPECT_EQ(formatTime(12.34), QStringLiteral("12.3 ns"));
    EXPECT_EQ(formatTime(1.5), QStringLiteral("1.50 ns"));
    EXPECT_EQ(formatTime(999.7), QStringLiteral("1.00 us"));
    EXPECT_EQ(formatTime(1253400), QStringLiteral("1.25 ms"));
    EXPECT_EQ(formatTime(3.2e12), QStringLiteral("3200 s"));

    EXPECT_EQ(formatBytes(12500026), QStringLiteral("12,500,026 B"));
    EXPECT_EQ(formatBytes(999), QStringLiteral("999 B"));
    EXPECT_EQ(formatBytes(1000), QStringLiteral("1,000 B"));
}
