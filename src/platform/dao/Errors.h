#pragma once

#include "platform/basic/RuntimeError.h"

namespace dao {

using basic::Error;
using basic::RuntimeError;

} // namespace dao
