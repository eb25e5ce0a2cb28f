#include "ZKBenchReport.h"

#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <climits>
#include <cmath>

namespace ZKBenchReport {

namespace {

bool isRunOption(const QString& part) {
    static const char* const prefixes[] = {
        "min_time:", "min_warmup_time:", "repeats:", "iterations:", "threads:"};
    for (const char* prefix : prefixes)
        if (part.startsWith(QLatin1String(prefix)))
            return true;
    return part == QLatin1String("real_time") || part == QLatin1String("process_time") ||
           part == QLatin1String("manual_time");
}

double toNanoseconds(double value, const QString& unit) {
    if (unit == QLatin1String("us"))
        return value * 1e3;
    if (unit == QLatin1String("ms"))
        return value * 1e6;
    if (unit == QLatin1String("s"))
        return value * 1e9;
    return value; // "ns", Google Benchmark's default
}

QString suiteOf(const QJsonObject& context) {
    QString name = QFileInfo(context.value(QLatin1String("executable")).toString()).fileName();
    if (name.startsWith(QLatin1String("zk_")))
        name.remove(0, 3);
    if (name.endsWith(QLatin1String("_bench")))
        name.chop(6);
    return name;
}

// Running sums of the iteration runs of one name, used when no median exists.
struct Sums {
    int count = 0;
    Measurement sum;
};

void addInto(Measurement& into, const Measurement& m) {
    into.cpuNs += m.cpuNs;
    into.realNs += m.realNs;
    into.bytes += m.bytes;
    into.elements += m.elements;
    into.hasBytes = into.hasBytes || m.hasBytes;
}

// Three significant digits, without an exponent.
QString threeDigits(double v) {
    const int decimals = v >= 100 ? 0 : v >= 10 ? 1 : 2;
    return QString::number(v, 'f', decimals);
}

QString groupedInteger(double value) {
    const QString digits = QString::number(std::llround(value));
    const bool negative = digits.startsWith(QLatin1Char('-'));
    QString body = negative ? digits.mid(1) : digits;
    for (int i = body.size() - 3; i > 0; i -= 3)
        body.insert(i, QLatin1Char(','));
    return negative ? QLatin1Char('-') + body : body;
}

QString ratioText(double ratio) {
    return ratio > 0 ? QString::number(ratio, 'f', 2) : QStringLiteral("-");
}

QString markdownTable(const QStringList& header, const QVector<QStringList>& rows) {
    QVector<int> widths;
    for (const QString& h : header)
        widths.push_back(h.size());
    for (const QStringList& row : rows)
        for (int c = 0; c < row.size() && c < widths.size(); ++c)
            widths[c] = std::max(widths[c], int(row[c].size()));
    auto line = [&](const QStringList& cells) {
        QString out = QStringLiteral("|");
        for (int c = 0; c < widths.size(); ++c) {
            const QString cell = c < cells.size() ? cells[c] : QString();
            // Names left, figures right.
            out += QLatin1Char(' ') +
                   (c == 0 || c == 3 ? cell.leftJustified(widths[c])
                                     : cell.rightJustified(widths[c])) +
                   QStringLiteral(" |");
        }
        return out + QLatin1Char('\n');
    };
    QString out = line(header);
    QString rule = QStringLiteral("|");
    for (int c = 0; c < widths.size(); ++c)
        rule +=
            (c == 0 || c == 3 ? QStringLiteral(":") + QString(widths[c] + 1, QLatin1Char('-'))
                              : QString(widths[c] + 1, QLatin1Char('-')) + QStringLiteral(":")) +
            QLatin1Char('|');
    out += rule + QLatin1Char('\n');
    for (const QStringList& row : rows)
        out += line(row);
    return out;
}

} // namespace

BenchName parseRunName(const QString& runName) {
    BenchName result;
    QStringList parts = runName.split(QLatin1Char('/'));
    QString function = parts.takeFirst();
    if (function.startsWith(QLatin1String("BM_")))
        function.remove(0, 3);
    const int angle = function.indexOf(QLatin1Char('<'));
    const QString base = angle < 0 ? function : function.left(angle);
    const QString templateArgs = angle < 0 ? QString() : function.mid(angle);
    const int underscore = base.indexOf(QLatin1Char('_'));
    if (underscore <= 0 || underscore == base.size() - 1)
        return result;
    result.impl = base.left(underscore);
    result.operation = base.mid(underscore + 1) + templateArgs;
    QStringList args;
    for (const QString& part : parts)
        if (!isRunOption(part))
            args.push_back(part);
    result.args = args.join(QLatin1Char('/'));
    result.valid = true;
    return result;
}

bool isLibraryImpl(const QString& impl) {
    return impl.startsWith(QLatin1String("ZK"));
}

bool readBenchmarkJson(const QByteArray& json, QVector<Measurement>& out, QString* error) {
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (doc.isNull() || !doc.isObject()) {
        if (error)
            *error = parseError.error != QJsonParseError::NoError ? parseError.errorString()
                                                                  : QStringLiteral("not an object");
        return false;
    }
    const QJsonObject root = doc.object();
    if (!root.value(QLatin1String("benchmarks")).isArray()) {
        if (error)
            *error = QStringLiteral("no \"benchmarks\" array");
        return false;
    }
    const QString suite = suiteOf(root.value(QLatin1String("context")).toObject());

    QStringList order;
    QHash<QString, Measurement> medians;
    QHash<QString, Sums> sums;
    QHash<QString, QString> errors;
    QHash<QString, QString> labels;
    QHash<QString, QPair<int, int>> ranks;
    const QJsonArray benchmarks = root.value(QLatin1String("benchmarks")).toArray();
    for (const QJsonValue& value : benchmarks) {
        const QJsonObject b = value.toObject();
        QString runName = b.value(QLatin1String("run_name")).toString();
        if (runName.isEmpty())
            runName = b.value(QLatin1String("name")).toString();
        if (runName.isEmpty())
            continue;
        if (!order.contains(runName)) {
            order.push_back(runName);
            // Registration order, which random interleaving does not keep.
            const int family = b.value(QLatin1String("family_index")).toInt(INT_MAX);
            const int instance = b.value(QLatin1String("per_family_instance_index")).toInt();
            ranks.insert(runName, qMakePair(family, instance));
        }
        if (b.value(QLatin1String("error_occurred")).toBool()) {
            errors.insert(runName, b.value(QLatin1String("error_message")).toString());
            continue;
        }
        const QString unit = b.value(QLatin1String("time_unit")).toString();
        Measurement m;
        m.cpuNs = toNanoseconds(b.value(QLatin1String("cpu_time")).toDouble(), unit);
        m.realNs = toNanoseconds(b.value(QLatin1String("real_time")).toDouble(), unit);
        m.hasBytes = b.contains(QLatin1String("bytes"));
        m.bytes = b.value(QLatin1String("bytes")).toDouble();
        m.elements = b.value(QLatin1String("elements")).toDouble();
        const QString label = b.value(QLatin1String("label")).toString();
        if (!label.isEmpty())
            labels.insert(runName, label);
        if (b.value(QLatin1String("run_type")).toString() == QLatin1String("aggregate")) {
            if (b.value(QLatin1String("aggregate_name")).toString() == QLatin1String("median"))
                medians.insert(runName, m);
        } else {
            Sums& s = sums[runName];
            ++s.count;
            addInto(s.sum, m);
        }
    }

    std::stable_sort(order.begin(), order.end(), [&ranks](const QString& a, const QString& b) {
        return ranks.value(a) < ranks.value(b);
    });
    for (const QString& runName : order) {
        Measurement m;
        if (medians.contains(runName)) {
            m = medians.value(runName);
        } else if (sums.contains(runName)) {
            const Sums s = sums.value(runName);
            m = s.sum;
            m.cpuNs /= s.count;
            m.realNs /= s.count;
            m.bytes /= s.count;
            m.elements /= s.count;
        }
        m.error = errors.value(runName);
        m.suite = suite;
        m.runName = runName;
        m.name = parseRunName(runName);
        m.label = labels.value(runName);
        out.push_back(m);
    }
    return true;
}

Report buildReport(const QVector<Measurement>& measurements, TimeKind kind) {
    Report report;
    QStringList groupOrder;
    QHash<QString, QVector<Measurement>> groups;
    for (const Measurement& m : measurements) {
        const QString where = m.suite + QStringLiteral(": ") + m.runName;
        if (!m.error.isEmpty()) {
            report.errors.push_back(where + QStringLiteral(": ") + m.error);
            continue;
        }
        if (!m.name.valid) {
            report.badNames.push_back(where);
            continue;
        }
        const QString key =
            m.suite + QLatin1Char('\x1f') + m.name.operation + QLatin1Char('\x1f') + m.name.args;
        if (!groups.contains(key))
            groupOrder.push_back(key);
        groups[key].push_back(m);
    }

    const auto timeOf = [kind](const Measurement& m) {
        return kind == TimeKind::Cpu ? m.cpuNs : m.realNs;
    };
    const auto perElement = [](const Measurement& m) {
        return m.elements > 0 ? m.bytes / m.elements : 0.0;
    };
    for (const QString& key : groupOrder) {
        const QVector<Measurement>& group = groups[key];
        QVector<Measurement> lib, peers;
        for (const Measurement& m : group)
            (isLibraryImpl(m.name.impl) ? lib : peers).push_back(m);
        if (lib.isEmpty() || peers.isEmpty()) {
            for (const Measurement& m : group)
                report.unpaired.push_back(m.suite + QStringLiteral(": ") + m.runName);
            continue;
        }
        for (const Measurement& l : lib) {
            QStringList sizeParts;
            if (!l.name.args.isEmpty())
                sizeParts.push_back(formatSize(l.name.args));
            if (!l.label.isEmpty())
                sizeParts.push_back(l.label);
            for (const Measurement& p : peers) {
                Row row;
                row.suite = l.suite;
                row.operation = l.name.operation;
                row.size = sizeParts.join(QLatin1Char(' '));
                row.libImpl = l.name.impl;
                row.peer = p.name.impl;
                row.libValue = timeOf(l);
                row.peerValue = timeOf(p);
                row.ratio = row.peerValue > 0 ? row.libValue / row.peerValue : 0;
                report.timeRows.push_back(row);
                if (l.hasBytes && p.hasBytes) {
                    row.libValue = l.bytes;
                    row.peerValue = p.bytes;
                    row.ratio = p.bytes > 0 ? l.bytes / p.bytes : 0;
                    row.libPerElement = perElement(l);
                    row.peerPerElement = perElement(p);
                    report.memoryRows.push_back(row);
                }
            }
        }
    }
    return report;
}

QString formatSize(const QString& args) {
    QStringList parts = args.split(QLatin1Char('/'));
    for (QString& part : parts) {
        bool ok = false;
        long long v = part.toLongLong(&ok);
        if (!ok || v < 1000)
            continue;
        int exponent = 0;
        while (v % 10 == 0) {
            v /= 10;
            ++exponent;
        }
        if (v == 1)
            part = QStringLiteral("10^") + QString::number(exponent);
    }
    return parts.join(QLatin1Char('/'));
}

QString formatTime(double ns) {
    static const char* const units[] = {"ns", "us", "ms", "s"};
    int unit = 0;
    while (unit < 3 && ns >= 999.5) {
        ns /= 1000;
        ++unit;
    }
    return threeDigits(ns) + QLatin1Char(' ') + QLatin1String(units[unit]);
}

QString formatBytes(double bytes) {
    return groupedInteger(bytes) + QStringLiteral(" B");
}

QString renderReport(const Report& report, TimeKind kind) {
    QString out;
    const QString timeWord =
        kind == TimeKind::Cpu ? QStringLiteral("CPU time") : QStringLiteral("wall time");
    QVector<QStringList> rows;
    for (const Row& r : report.timeRows)
        rows.push_back({r.suite + QStringLiteral(": ") + r.operation, r.size,
                        formatTime(r.libValue), r.peer, formatTime(r.peerValue),
                        ratioText(r.ratio)});
    out += QStringLiteral("Time per operation (%1; the median when repeated)\n\n").arg(timeWord);
    out += markdownTable({QStringLiteral("operation"), QStringLiteral("size"),
                          QStringLiteral("ZKUtils"), QStringLiteral("peer"),
                          QStringLiteral("peer time"), QStringLiteral("ZKUtils/peer")},
                         rows);

    if (!report.memoryRows.isEmpty()) {
        rows.clear();
        const auto bytesCell = [](double bytes, double perElement) {
            QString cell = formatBytes(bytes);
            if (perElement > 0)
                cell += QStringLiteral(" (%1 B/element)").arg(QString::number(perElement, 'g', 4));
            return cell;
        };
        for (const Row& r : report.memoryRows)
            rows.push_back({r.suite + QStringLiteral(": ") + r.operation, r.size,
                            bytesCell(r.libValue, r.libPerElement), r.peer,
                            bytesCell(r.peerValue, r.peerPerElement), ratioText(r.ratio)});
        out += QStringLiteral("\nMemory held (heap bytes measured plus the object itself)\n\n");
        out += markdownTable({QStringLiteral("structure"), QStringLiteral("size"),
                              QStringLiteral("ZKUtils"), QStringLiteral("peer"),
                              QStringLiteral("peer bytes"), QStringLiteral("ZKUtils/peer")},
                             rows);
    }

    const auto section = [&out](const QString& title, const QStringList& lines) {
        if (lines.isEmpty())
            return;
        out += QLatin1Char('\n') + title + QLatin1Char('\n');
        for (const QString& line : lines)
            out += QStringLiteral("  ") + line + QLatin1Char('\n');
    };
    section(QStringLiteral("Runs without a partner (same operation and size, library and peer):"),
            report.unpaired);
    section(QStringLiteral("Runs not named <Impl>_<Operation>:"), report.badNames);
    section(QStringLiteral("Runs that failed:"), report.errors);
    return out;
}

} // namespace ZKBenchReport
