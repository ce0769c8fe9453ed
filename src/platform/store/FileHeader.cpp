#include "platform/store/FileHeader.h"

#include "platform/store/Errors.h"

#include <QFileInfo>
#include <sqlite3.h>

#include <algorithm>
#include <span>
#include <string_view>

namespace store {

namespace {

/// SQLite's result code. What lies past the end of a file that is too short counts as zeros.
int Read(sqlite3* database, FileHeader& header)
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods == nullptr)
        return SQLITE_CANTOPEN;
    return file->pMethods->xRead(file, header.bytes.data(), int(header.bytes.size()), 0);
}

} // namespace

bool ReadHeader(sqlite3* database, FileHeader& header)
{
    return Read(database, header) == SQLITE_OK;
}

FileHeader HeaderOf(sqlite3* immutable, const QString& name)
{
    constexpr std::string_view magic("SQLite format 3\0", 16);
    FileHeader header;
    const int code = Read(immutable, header);
    const bool isEmptied = (code == SQLITE_OK || code == SQLITE_IOERR_SHORT_READ) &&
                           std::ranges::all_of(header.bytes, [](unsigned char byte) { return byte == 0; });
    if (isEmptied)
        throw RuntimeError(Error::DamagedDatabase, name);
    const bool isOurs = code == SQLITE_OK &&
                        std::ranges::equal(magic, std::span(header.bytes).first(magic.size()),
                                           [](char left, unsigned char right) { return left == char(right); }) &&
                        header.NumberAt(68) == ApplicationId;
    if (!isOurs)
        throw RuntimeError(Error::UnrecognizedFormat, name);
    if (header.NumberAt(60) > SchemaVersion)
        RaiseNewer(name);
    return header;
}

void RaiseNewer(const QString& name)
{
    throw RuntimeError::Described(Error::UnrecognizedFormat,
                                  "Format de base de données '" + name +
                                      "' non reconnu : le fichier vient d'une version plus récente du programme.");
}

void RequireWholePages(const FileHeader& header, const QString& path)
{
    if (header.PageSize() == 0 || QFileInfo(path).size() % header.PageSize() != 0)
        throw RuntimeError(Error::DamagedDatabase, QFileInfo(path).fileName());
}

} // namespace store
