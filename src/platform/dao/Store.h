#pragma once

#include "platform/basic/RuntimeError.h"
#include "platform/store/Sqlite.h"
#include "platform/store/StoredValue.h"
#include "platform/store/Value.h"

/// What record sets and dialect use of the storage.
namespace dao {

using basic::Error;
using basic::RuntimeError;
using store::ColumnType;
using store::Quoted;
using store::ResetAtEnd;
using store::Statement;
using store::StoredValue;
using store::Value;

} // namespace dao
