#pragma once

#include <QString>
#include <QStringList>

// The arguments the store benchmarks share: a row count and, to measure the
// server store, --server HOST[:PORT]/DATABASE.
struct BenchArguments
{
    int rows = 0;
    QString server;

    static BenchArguments read(const QStringList& args, int defaultRows)
    {
        BenchArguments a{defaultRows, {}};
        for (qsizetype i = 0; i < args.size(); ++i) {
            if (args[i] == QLatin1String("--server") && i + 1 < args.size())
                a.server = args[++i];
            else
                a.rows = args[i].toInt();
        }
        return a;
    }
};
