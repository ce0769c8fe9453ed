#pragma once

#include <QByteArray>
#include <QString>
#include <exception>

namespace basic {

/// The numbers of the run-time errors, as messages show them.
enum class Error : int {
    BadArgument = 5,
    Overflow = 6,
    OutOfMemory = 7,
    IndexOutOfRange = 9,
    TypeMismatch = 13,
    Internal = 51,
    FileNotFound = 53,
    DeviceFailure = 57,
    FileExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathAccess = 75,
    PathNotFound = 76,
    InvalidNull = 94,
    InvalidProperty = 380,
    PrinterFailure = 482,

    NoPendingEdit = 3020, ///< Update or CancelUpdate without AddNew or Edit
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    DatabaseNotFound = 3024,
    ReadOnly = 3027,
    UnreadableWorkgroup = 3028,
    AccountRefused = 3029,
    NoTransaction = 3034,
    TooManyRows = 3035,
    DiskOrNetwork = 3043,
    FileReplaced = 3044, ///< the path no longer leads to the open file
    DamagedDatabase = 3049,
    FileNotOpened = 3051,
    QueryTimeout = 3059,
    UnknownColumn = 3061, ///< in a statement
    NotAnAction = 3065,   ///< Execute of a select
    SyntaxError = 3075,
    UnknownTable = 3078,
    AmbiguousColumn = 3079,
    UnknownFunction = 3085,
    FieldTooSmall = 3163,
    FieldNotUpdatable = 3164,
    RecordDeleted = 3167,
    Locked = 3187, ///< by another process, for longer than the busy timeout
    FieldExists = 3191,
    DatabaseExists = 3204,
    InvalidOperation = 3219,
    NestedTransaction = 3246,
    UnknownField = 3265, ///< of a record set
    NullNotAllowed = 3314,
    ValidationFailed = 3317,
    UnrecognizedFormat = 3343,
    ObjectClosed = 3420,
    ConversionFailed = 3421,
};

/// The program's exception type: a numbered run-time error with its French description.
///
/// What the user can correct is a message box, not an exception.
class RuntimeError : public std::exception {
public:
    /// The error with its standard description, in which `detail` replaces "|". Without one it is "Erreur définie par
    /// l'application ou par l'objet".
    explicit RuntimeError(Error error, const QString& detail = {});
    /// The error with a description of its own.
    static RuntimeError Described(Error error, const QString& description);

    Error Code() const { return code; }
    int Number() const { return static_cast<int>(code); }
    const QString& Description() const { return description; }
    const char* what() const noexcept override { return utf8.constData(); }

private:
    struct OwnDescription {
        const QString& text;
    };
    RuntimeError(Error error, OwnDescription own);

    Error code;
    QString description;
    QByteArray utf8;
};

} // namespace basic
