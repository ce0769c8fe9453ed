#pragma once

#include "platform/basic/RuntimeError.h"

namespace store {

using basic::Error;
using basic::RuntimeError;

} // namespace store
