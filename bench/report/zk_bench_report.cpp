// zk_bench_report: prints one table of the library against its peers from the
// JSON files that the benchmark programs wrote (--benchmark_format=json or
// --benchmark_out=<file>).
//
//     zk_bench_report [--time=cpu|real] <file.json>...
//
// Exit status: 0 when every file was read and no run failed, 1 otherwise
// (the table is printed in both cases), 2 on a usage error.
#include "ZKBenchReport.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    QStringList args = QCoreApplication::arguments().mid(1);
    ZKBenchReport::TimeKind kind = ZKBenchReport::TimeKind::Cpu;
    QStringList files;
    for (const QString& arg : args) {
        if (arg == QLatin1String("--time=cpu")) {
            kind = ZKBenchReport::TimeKind::Cpu;
        } else if (arg == QLatin1String("--time=real")) {
            kind = ZKBenchReport::TimeKind::Real;
        } else if (arg.startsWith(QLatin1String("--"))) {
            err << "unknown option " << arg << "\n";
            return 2;
        } else {
            files.push_back(arg);
        }
    }
    if (files.isEmpty()) {
        err << "usage: zk_bench_report [--time=cpu|real] <file.json>...\n";
        return 2;
    }

    bool ok = true;
    QVector<ZKBenchReport::Measurement> measurements;
    for (const QString& path : files) {
        QFile file(path);
        QString error;
        if (!file.open(QIODevice::ReadOnly)) {
            err << path << ": " << file.errorString() << "\n";
            ok = false;
        } else if (!ZKBenchReport::readBenchmarkJson(file.readAll(), measurements, &error)) {
            err << path << ": " << error << "\n";
            ok = false;
        }
    }
    const ZKBenchReport::Report report = ZKBenchReport::buildReport(measurements, kind);
    QTextStream(stdout) << ZKBenchReport::renderReport(report, kind);
    return ok && report.errors.isEmpty() ? 0 : 1;
}
