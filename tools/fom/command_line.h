#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fom/options.h"

// The option parser's own names: its headers stay in options*.cpp.
namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace command {

/// The subcommands while they are declared and read.
class CommandLine {
public:
    /// Makes the task of the values that were given; empty, with one line in `mistake`, for such as do not
    /// fit.
    using Reader = std::function<std::optional<Task>(std::string& mistake)>;

    CommandLine();
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// Declares a subcommand. Options are added to what is returned; they lead to values that `reader` owns.
    CLI::App& Add(const char* name, const char* help, const char* examples, Reader reader);
    /// As ParseOptions.
    std::optional<Task> Parse(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
                              int& exitCode);

private:
    struct Subcommand {
        CLI::App* app;
        Reader read;
    };

    std::optional<Task> ReadValues(std::ostream& err, int& exitCode) const;
    int Help(std::ostream& out, std::ostream& err) const;
    const CLI::App* Find(const std::string& name) const;

    std::unique_ptr<CLI::App> m_app;
    CLI::App* m_help;
    std::vector<Subcommand> m_subcommands;
    std::string m_topic;
};

// Parts that subcommands have in common. A name must not be empty: what an unset variable of a script gives
// must not pass for standard output, nor for the folder one is in.
CLI::Option& AddName(CLI::App& app, const char* option, std::string& name, const char* help);
CLI::Option& AddNames(CLI::App& app, const char* option, std::vector<std::string>& names, const char* help);
/// -o and --force.
CLI::Option& AddOutput(CLI::App& app, std::string& name, bool& force, const char* help);
/// A text that must not be empty either.
CLI::Option& AddText(CLI::App& app, const char* option, std::string& text, const char* help);

// Families of subcommands, each in a file of its own.
void AddImport(CommandLine& line);
void AddSwatches(CommandLine& line);
void AddPens(CommandLine& line);
void AddDocument(CommandLine& line);
void AddDemo(CommandLine& line);
void AddRewrite(CommandLine& line);

}  // namespace command
