#include "support/HostileTexts.h"

#include "support/User.h"

#include <QApplication>
#include <QFile>
#include <QInputMethodEvent>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tests {

QStringList HostileTexts()
{
    QFile file(HOSTILE_TEXTS);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList texts;
    for (const QJsonValue& text : QJsonDocument::fromJson(file.readAll()).array())
        texts << text.toString();
    EXPECT_GT(texts.size(), 300);
    return texts;
}

void Enter(QWidget& field, const QString& text)
{
    Press(field, Qt::Key_A, Qt::ControlModifier);
    Press(field, Qt::Key_Delete);
    QInputMethodEvent entered;
    entered.setCommitString(text);
    QApplication::sendEvent(&field, &entered);
}

} // namespace tests
