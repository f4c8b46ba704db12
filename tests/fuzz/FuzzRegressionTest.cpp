// Every seed of the fuzzers and every input they ever found a fault with,
// run again through the same entry functions in the ordinary build: a
// fault once found stays found.

#include "FuzzTargets.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

QStringList inputs(const QString& kind)
{
    QStringList files;
    for (const QString& folder : {QStringLiteral("seeds"), QStringLiteral("regressions")}) {
        const QDir dir(QStringLiteral(KB_FUZZ_DIR) + QLatin1Char('/') + folder + QLatin1Char('/') + kind);
        for (const QString& name : dir.entryList(QDir::Files, QDir::Name))
            files.append(dir.filePath(name));
    }
    return files;
}

template <typename Target> void runAll(const QString& kind, Target target)
{
    const QStringList files = inputs(kind);
    EXPECT_FALSE(files.isEmpty());
    for (const QString& path : files) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QByteArray bytes = file.readAll();
        SCOPED_TRACE(path.toStdString());
        EXPECT_NO_THROW(target(reinterpret_cast<const std::uint8_t*>(bytes.constData()), std::size_t(bytes.size())));
    }
}

TEST(FuzzFindings, StatementTexts) { runAll(QStringLiteral("sql"), kb::fuzz::statementText); }

TEST(FuzzFindings, TsplibFiles) { runAll(QStringLiteral("tsplib"), kb::fuzz::tsplibFile); }

TEST(FuzzFindings, SettingsFiles) { runAll(QStringLiteral("settings"), kb::fuzz::settingsFile); }

} // namespace
