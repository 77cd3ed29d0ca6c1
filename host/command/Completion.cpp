// SPDX-License-Identifier: MIT
#include "host/command/Completion.h"

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "host/Files.h"
#include "host/command/Options.h"

namespace larynth {
namespace {

using Names = std::vector<std::string>;

/// What can stand for a value; neither for numbers.
struct Values {
    std::string words;  // with blanks between them
    bool files = false;
};

Values ValuesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    if (type.find('|') == type.npos) return {"", type == "FILE"};
    Values values;
    for (const std::string& word : CLI::detail::split(type, '|')) {
        if (word == "FILE") {
            values.files = true;
            continue;
        }
        values.words += (values.words.empty() ? "" : " ") + word.substr(0, word.find("FILE"));
    }
    return values;
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<const CLI::Option*> PositionalsOf(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

/// As they are written on a command line.
Names NamesOf(const CLI::Option& option) {
    Names names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

Names AllNames(const CLI::App& app) {
    Names all;
    for (const CLI::Option* option : OptionsOf(app)) {
        for (std::string& name : NamesOf(*option)) all.push_back(std::move(name));
    }
    return all;
}

std::string Joined(const Names& names, const char* between) { return CLI::detail::join(names, between); }

bool TakesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

std::string BashReply(const std::string& generator) {
    return "mapfile -t COMPREPLY < <(compgen " + generator + " -- \"$word\")";
}

std::string BashWords(const Names& words) { return BashReply("-W '" + Joined(words, " ") + "'"); }

std::string BashReply(const Values& values) {
    std::string generator = values.files ? "-f" : "";
    if (!values.words.empty()) generator += " -W '" + values.words + "'";
    return generator.empty() ? ":" : BashReply(generator);
}

/// The words behind a command: after an option its values, else options or what the command works on.
std::string BashCase(const CLI::App& command) {
    std::string text = "    " + command.get_name() + ")\n        case $before in\n";
    for (const CLI::Option* option : OptionsOf(command)) {
        if (!TakesValue(*option)) continue;
        text += "        " + Joined(NamesOf(*option), " | ") + ") " + BashReply(ValuesOf(*option)) +
                "; return ;;\n";
    }
    text += "        esac\n        if [[ $word == -* ]]; then " + BashWords(AllNames(command));
    for (const CLI::Option* option : PositionalsOf(command)) text += "; else " + BashReply(ValuesOf(*option));
    return text + "; fi\n        ;;\n";
}

std::string BashScript(const CLI::App& program) {
    Names first = AllNames(program);
    std::string cases;
    for (const CLI::App* command : CommandsOf(program)) {
        first.push_back(command->get_name());
        cases += BashCase(*command);
    }
    return "_larynth() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    COMPREPLY=()\n"
           "    if ((COMP_CWORD == 1)); then\n        " +
           BashWords(first) + "\n        return\n    fi\n    case ${COMP_WORDS[1]} in\n" + cases +
           "    esac\n}\ncomplete -o filenames -F _larynth larynth\n";
}

/// In single quotes, with a backslash before each of `special`.
std::string ZshQuoted(std::string_view text, std::string_view special) {
    std::string quoted = "'";
    for (const char c : text) {
        if (special.find(c) != special.npos) quoted += '\\';
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return quoted + '\'';
}

std::string ZshValue(const CLI::Option& option) {
    const Values values = ValuesOf(option);
    const std::string action = values.words.empty() ? "" : '(' + values.words + ')';
    return ':' + ZshQuoted(option.get_type_name(), ":") + ':' +
           (action.empty() ? values.files ? "_files" : "' '" : ZshQuoted(action, ":"));
}

std::string ZshOption(const CLI::Option& option) {
    const Names names = NamesOf(option);
    const std::string spellings =
        names.size() == 1 ? names[0] : "'(" + Joined(names, " ") + ")'{" + Joined(names, ",") + "}";
    return spellings +
           ZshQuoted('[' + CLI::detail::find_and_replace(option.get_description(), "]", ")") + ']', "") +
           (TakesValue(option) ? ZshValue(option) : "");
}

std::string ZshCase(const CLI::App& command) {
    std::string text = "    " + command.get_name() + ") _arguments -S";
    for (const CLI::Option* option : OptionsOf(command)) text += " \\\n        " + ZshOption(*option);
    for (const CLI::Option* option : PositionalsOf(command)) {
        text += option->get_items_expected_max() > 1 ? " \\\n        '*'" : " \\\n        1";
        text += ZshValue(*option);
    }
    return text + " ;;\n";
}

std::string ZshScript(const CLI::App& program) {
    std::string names, cases;
    for (const CLI::App* command : CommandsOf(program)) {
        names += "        " + ZshQuoted(command->get_name() + ':' + command->get_description(), "") + '\n';
        cases += ZshCase(*command);
    }
    return "#compdef larynth\n_larynth() {\n    local -a commands=(\n" + names +
           "    )\n"
           "    if ((CURRENT == 2)); then\n"
           "        _describe command commands\n        _values option " +
           Joined(AllNames(program), " ") +
           "\n        return\n    fi\n"
           "    shift words\n    ((CURRENT--))\n    case $words[1] in\n" +
           cases + "    esac\n}\n_larynth \"$@\"\n";
}

}  // namespace

void AddCompletionCommand(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("completion", "Write the script by which a shell completes command lines");
    command->footer("Example:\n  larynth completion bash >larynth.bash && source larynth.bash");
    command
        ->add_option_function<std::string>(
            "SHELL",
            [&program](const std::string& shell) {
                if (shell != "bash" && shell != "zsh") Refuse("SHELL", "bash or zsh", shell);
                WriteToStandardOutput(shell == "bash" ? BashScript(program) : ZshScript(program));
            },
            "Which one")
        ->required()
        ->type_name("bash|zsh");
}

}  // namespace larynth
