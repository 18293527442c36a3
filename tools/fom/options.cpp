#include "fom/options.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <utility>

#include "fom/command_line.h"

#ifndef FOM_VERSION
#define FOM_VERSION "unknown"
#endif

namespace command {
namespace {

constexpr const char* kDescription =
    "Reads the fills and strokes of SVG drawings into a document in which each distinct one exists once.";

constexpr const char* kExamples = R"(Examples:
  fom import drawings/
  fom import drawings/ -o art.fomdoc
  fom swatches drawings/ -o sheet.png
  fom pens --under 'scale(2 1) rotate(30)' --width 2mm -o pens.png
  fom demo drawings/ -o out/
)";

constexpr const char* kMoreHelp = "\nRun with --help for more information.\n";

std::string CheckNamed(const std::string& name) {
    return name.empty() ? "the name of the file is empty" : std::string();
}

std::string CheckGiven(const std::string& text) {
    return text.empty() ? "the text is empty" : std::string();
}

std::string DescribeMistake(const CLI::App* app, const CLI::Error& error) {
    const std::vector<std::string> unknown = app->remaining();
    const bool hasCommand = !app->get_subcommands().empty();
    const std::string reason =
        hasCommand || unknown.empty() ? error.what() : "no command '" + unknown.front() + "'";
    return "fom: " + reason + kMoreHelp;
}

}  // namespace

CommandLine::CommandLine() : m_app(std::make_unique<CLI::App>(kDescription, "fom")) {
    m_app->set_version_flag("--version", "fom " FOM_VERSION);
    m_app->require_subcommand(1);
    m_app->failure_message(DescribeMistake);
    m_app->footer(kExamples);
    AddImport(*this);
    AddSwatches(*this);
    AddPens(*this);
    AddDocument(*this);
    AddRewrite(*this);
    AddDemo(*this);
    m_help = m_app->add_subcommand("help", "explain a command");
    m_help->add_option("command", m_topic, "the command to explain");
}

CommandLine::~CommandLine() = default;

CLI::App& CommandLine::Add(const char* name, const char* help, const char* examples, Reader reader) {
    CLI::App* app = m_app->add_subcommand(name, help);
    app->footer(examples);
    m_subcommands.push_back({app, std::move(reader)});
    return *app;
}

std::optional<Task> CommandLine::Parse(int argc, const char* const* argv, std::ostream& out,
                                       std::ostream& err, int& exitCode) {
    exitCode = kSuccess;
    try {
        m_app->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool answered = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
        m_app->exit(error, out, err);
        exitCode = answered ? kSuccess : kUsage;
        return std::nullopt;
    }
    if (!m_help->parsed()) return ReadValues(err, exitCode);
    exitCode = Help(out, err);
    return std::nullopt;
}

std::optional<Task> CommandLine::ReadValues(std::ostream& err, int& exitCode) const {
    for (const Subcommand& subcommand : m_subcommands) {
        if (!subcommand.app->parsed()) continue;
        std::string mistake;
        std::optional<Task> task = subcommand.read(mistake);
        if (task) return task;
        err << "fom: " << mistake << kMoreHelp;
    }
    exitCode = kUsage;
    return std::nullopt;
}

const CLI::App* CommandLine::Find(const std::string& name) const {
    for (const Subcommand& subcommand : m_subcommands)
        if (subcommand.app->get_name() == name) return subcommand.app;
    return name == m_help->get_name() ? m_help : nullptr;
}

int CommandLine::Help(std::ostream& out, std::ostream& err) const {
    const CLI::App* topic = m_topic.empty() ? m_app.get() : Find(m_topic);
    if (!topic) {
        err << "fom: no command '" << m_topic << "'\n";
        return kUsage;
    }
    out << topic->get_formatter()->make_help(topic, m_topic.empty() ? "fom" : "fom " + m_topic,
                                             CLI::AppFormatMode::Normal);
    return kSuccess;
}

CLI::Option& AddName(CLI::App& app, const char* option, std::string& name, const char* help) {
    return *app.add_option(option, name, help)->check(CheckNamed);
}

CLI::Option& AddNames(CLI::App& app, const char* option, std::vector<std::string>& names, const char* help) {
    return *app.add_option(option, names, help)->check(CheckNamed);
}

CLI::Option& AddOutput(CLI::App& app, std::string& name, bool& force, const char* help) {
    app.add_flag("--force", force, "overwrite the file");
    return AddName(app, "-o,--output", name, help);
}

CLI::Option& AddText(CLI::App& app, const char* option, std::string& text, const char* help) {
    return *app.add_option(option, text, help)->check(CheckGiven);
}

std::optional<Task> ParseOptions(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
                                 int& exitCode) {
    return CommandLine().Parse(argc, argv, out, err, exitCode);
}

}  // namespace command
