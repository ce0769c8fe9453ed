#pragma once

#include <QDateTime>
#include <QFile>
#include <gtest/gtest.h>

/// Files as another program reads, writes and dates them.
namespace tests {

inline QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// Makes a file of these bytes, or overwrites it in its place.
inline void WriteFile(const QString& path, const QByteArray& bytes = {})
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    EXPECT_EQ(file.write(bytes), bytes.size()) << path.toStdString();
}

/// Dates a file to the evening of a day, at 18:02.
inline void DateFile(const QString& path, const QDate& day)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite)) << path.toStdString();
    EXPECT_TRUE(file.setFileTime(QDateTime(day, QTime(18, 2)), QFileDevice::FileModificationTime));
}

} // namespace tests
