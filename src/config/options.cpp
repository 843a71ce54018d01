#include "config/options.h"

#include <optional>
#include <string_view>

#include "support/fatal.h"
#include "support/output.h"

namespace {

constexpr std::size_t MAX_ARGUMENT_LENGTH = 199;

[[noreturn]] void ExitWithUsageHint(const char* program) {
    Print("type \"%s -help\" to get usage info\n", program);
    throw ProgramEnd{};
}

// Collects the argument for `option` when it is meant. Answers whether it was.
bool TakeOption(const Option& option, std::string_view text, const char* program,
                OptionValue& value) {
    const std::string_view name = option.Name;
    if (!text.starts_with(name)) {
        return false;
    }
    text.remove_prefix(name.size());
    if (text.empty()) {
        value.Given = true;
        return true;
    }
    if (text.front() != '=') {
        return false;
    }
    text.remove_prefix(1);
    if (text.empty() || text.size() > MAX_ARGUMENT_LENGTH) {
        PrintError("Error: Parameter for option \"%s\" is missing!\n", option.Name);
        ExitWithUsageHint(program);
    }
    value = {true, std::string(text)};
    return true;
}

void TakeArgument(const char* argument, const char* program, OptionValues& values) {
    if (argument[0] != '-') {
        PrintError("Error in command line (\"%s\" not recogniced)!\n", argument);
        Print("Type %s -help for help.\n", program);
        throw ProgramEnd{};
    }
    for (std::size_t i = 0; i < OPTIONS.size(); ++i) {
        if (TakeOption(OPTIONS[i], argument + 1, program, values[i])) {
            return;
        }
    }
    PrintError("Error in command line: Option \"%s\" is unknown!\n", argument);
    ExitWithUsageHint(program);
}

[[noreturn]] void ExitForInvalid(const Option& option) {
    ErrorExit("Error: Argument for option \"%s\" is invalid!\n", option.Name);
}

int WordValue(const Option& option, const std::string& argument) {
    for (const OptionWord& word : option.Words) {
        if (argument == word.Short || argument == word.Long) {
            return word.Value;
        }
    }
    ExitForInvalid(option);
}

int NumberValue(const Option& option, const std::string& argument) {
    const std::optional<int> number = ReadInt(argument);
    if (!number) {
        ExitForInvalid(option);
    }
    if (*number < option.Lowest || *number > option.Highest) {
        ErrorExit("Error: Argument for option \"%s\" is out of range (%i-%i)!\n", option.Name,
                  option.Lowest, option.Highest);
    }
    return *number;
}

int SettingOf(const Option& option, const std::string& argument) {
    if (argument.empty()) {
        if (option.Argument == OptionArgument::OptionalNumber) {
            return 1;
        }
        ErrorExit("Error: Option \"%s\" requires an argument!\n", option.Name);
    }
    return option.Argument == OptionArgument::Word ? WordValue(option, argument)
                                                   : NumberValue(option, argument);
}

void PrintOptionHelp(const Option& option) {
    if (option.Usage[0] != '\0') {
        Print("  %s\n", option.Usage);
    }
}

}  // namespace

void InitOptions(OptionValues& values) {
    values = {};
}

void GetOptions(OptionValues& values, int argumentCount, const char* const* arguments) {
    for (int i = 1; i < argumentCount; ++i) {
        TakeArgument(arguments[i], arguments[0], values);
    }
}

void ProcessOptions(const OptionValues& values) {
    for (std::size_t i = 0; i < OPTIONS.size(); ++i) {
        if (values[i].Given && OPTIONS[i].Field != nullptr) {
            GlobCfg.*OPTIONS[i].Field = SettingOf(OPTIONS[i], values[i].Argument);
        }
    }
}

void PrintCommandLineHelp([[maybe_unused]] const char* programName) {
    Print("\nusage: talurex {option(s)}\n");
    Print("-----------------------------------------------------\n");
    Print("Options:\n");
    for (std::size_t i = OPTION_HELP + 1; i < OPTIONS.size(); ++i) {
        PrintOptionHelp(OPTIONS[i]);
    }
    PrintOptionHelp(OPTIONS[OPTION_HELP]);
    Print("\ntalurex version date: %s\n", TALUREX_VERSION_DATE);
}
