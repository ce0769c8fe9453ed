#pragma once

#include "platform/basic/Int16.h"

#include <QDate>
#include <QString>
#include <variant>

namespace store {

/// A field value: Null, integer, real or text.
class Value {
public:
    Value() = default; ///< Null
    Value(int number) : held(qint64{number}) {}
    Value(qint64 number) : held(number) {}
    Value(basic::Int16 number) : held(qint64{int{number}}) {}
    Value(double number) : held(number) {}
    Value(const QString& text) : held(text) {}
    Value(const char* text) : held(QString::fromUtf8(text)) {}

    bool IsNull() const { return std::holds_alternative<std::monostate>(held); }

    /// The readers raise 94 on Null, 13 for another type and 6 when the value doesn't fit.
    QString Text() const;
    double Double() const;
    qint32 Long() const;
    basic::Int16 Integer() const;

    using Held = std::variant<std::monostate, qint64, double, QString>;
    const Held& Raw() const { return held; }

private:
    Held held;
};

} // namespace store
