#pragma once

#include "practice/commands/Arguments.h"
#include "practice/commands/Streams.h"

namespace practice {

/// One command: syntax, help and implementation.
struct Command {
    const char* name;
    const char* usage; ///< syntax after the name; may have several lines
    const char* help;  ///< description, indented by six
    std::span<const char* const> names;
    int optionalNames; ///< how many of the last names may be missing
    std::span<const Option> options;
    int (*run)(const Arguments& arguments, const Streams& streams);
    int trouble = Refused; ///< exit code after a run-time error
};

extern const Command NewCommand;
extern const Command SetCommand;
extern const Command DemoCommand;
extern const Command AdoptCommand;
extern const Command ImportCommand;
extern const Command FeedCommand;
extern const Command ExportCommand;
extern const Command FieldsCommand;
extern const Command ArchivesCommand;
extern const Command CompareCommand;
extern const Command RestoreCommand;
extern const Command CheckCommand;
extern const Command RepairCommand;
extern const Command CheckTemplateCommand;
extern const Command PreviewCommand;
extern const Command ShortcutCommand;

} // namespace practice
