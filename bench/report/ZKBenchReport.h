// ZKBenchReport.h: turns Google Benchmark JSON output into one side-by-side
// table of the library against its peers.
//
// Naming convention of every benchmark under bench/ (what pairs them):
//
//     <Impl>_<Operation>[<template arguments>][/<arg>...]
//
// <Impl> is one word without an underscore naming who does the work: a word
// starting with "ZK" is the library (ZK, ZKBinaryFile, ZKImage, ...), any
// other word a peer (Boost, VecBool, Eigen, Stdio, QDataStream, QImage, ...).
// An optional leading "BM_" is ignored. Benchmarks of one program with the
// same operation and the same arguments are compared: each library run is
// put beside every peer run. The size column shows the arguments, then the
// label a benchmark sets with State::SetLabel (for sizes fixed in the code).
//
// A benchmark that sets the counter "bytes" (memory it holds) also appears in
// the memory table; with a counter "elements" the bytes per element are shown.
//
// Threads: plain values and functions, no shared state.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace ZKBenchReport {

// The parts of one benchmark's run name.
struct BenchName {
    bool valid = false; // false when the name does not follow the convention
    QString impl;       // "ZK", "Boost", ...
    QString operation;  // "Count", "Walk<Sparse>", ...
    QString args;       // "1000000", "64/8", or empty
};

// Splits a run name such as "ZK_Walk<Sparse>/1000000/min_time:0.050". Run
// options that Google Benchmark appends (min_time:, repeats:, iterations:,
// threads:, real_time, process_time, manual_time, ...) are dropped.
BenchName parseRunName(const QString& runName);

// True for the library's own implementation words.
bool isLibraryImpl(const QString& impl);

// One benchmark's figures, the median of its repetitions when there are some.
struct Measurement {
    QString suite; // program name without "zk_" and "_bench": "containers"
    QString runName;
    BenchName name;
    QString label;
    double cpuNs = 0;  // per iteration
    double realNs = 0; // per iteration
    bool hasBytes = false;
    double bytes = 0;
    double elements = 0; // 0 when the counter is absent
    QString error;       // Google Benchmark's error message, if the run failed
};

// Reads one program's --benchmark_format=json output. The suite comes from
// context.executable. Runs come out in the order the program registered them
// (family_index), whatever order they ran in. Aggregates named "median" are
// preferred; without them the iteration runs of a name are averaged. Returns false with a message
// when the text is not such a document.
bool readBenchmarkJson(const QByteArray& json, QVector<Measurement>& out, QString* error);

enum class TimeKind { Cpu, Real };

// One line of the time table (or of the memory table: the "times" are then
// bytes).
struct Row {
    QString suite;
    QString operation;
    QString size;
    QString libImpl;
    double libValue = 0;
    QString peer;
    double peerValue = 0;
    double ratio = 0; // libValue / peerValue, 0 when the peer value is 0
    double libPerElement = 0;
    double peerPerElement = 0;
};

struct Report {
    QVector<Row> timeRows;
    QVector<Row> memoryRows;
    QStringList unpaired; // "suite: run name" of runs with no partner
    QStringList errors;   // "suite: run name: message"
    QStringList badNames; // "suite: run name" not following the convention
};

// Pairs the measurements, in the order the library's runs were read.
Report buildReport(const QVector<Measurement>& measurements, TimeKind kind);

// "1000000" -> "10^6" for powers of ten from 1000 up; other text unchanged.
QString formatSize(const QString& args);
// A time in nanoseconds with three significant digits: "812 ns", "1.25 ms".
QString formatTime(double ns);
// A byte count: "125 KB" style with three significant digits (1 KB = 1000 B).
QString formatBytes(double bytes);

// The report as text: the time table, the memory table, then unpaired runs,
// naming problems and errors. Tables are Markdown, columns padded.
QString renderReport(const Report& report, TimeKind kind);

} // namespace ZKBenchReport
