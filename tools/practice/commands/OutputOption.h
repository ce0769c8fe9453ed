#pragma once

#include "practice/commands/Arguments.h"
#include "practice/output/OutputFile.h"

#include <memory>

namespace practice {

/// The file that an option names, to be replaced with --force; null without the option. Raises as OutputFile does.
inline std::unique_ptr<OutputFile> OutputOf(const Arguments& arguments, const char* option, OutputKind kind)
{
    using enum OutputFile::Existing;
    return arguments.Has(option)
               ? std::make_unique<OutputFile>(arguments.Text(option), kind, arguments.Has("force") ? Replace : Refuse)
               : nullptr;
}

} // namespace practice
