#include "fom/options.h"

#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#ifndef FOM_VERSION
#define FOM_VERSION "unknown"
#endif

namespace command {
namespace {

constexpr const char* kExamples = R"(Examples:
  fom import drawings/
  fom import --json logo.svg -o report.json
  fom swatches drawings/ -o sheet.png
  fom pens --under 'scale(2 1) rotate(30)' --width 2mm -o pens.png
)";

constexpr const char* kImportExamples = R"(Examples:
  fom import drawings/                     all ".svg" files in the folder and below
  fom import a.svg b.svg                   as one document
  fom import --json drawings/ -o report.json

A drawing with an error contributes nothing and is named on standard error; the others go on.
)";

constexpr const char* kSwatchesExamples = R"(Examples:
  fom swatches drawings/ -o sheet.png
  fom swatches drawings/ -o sheet.png --limit 100 --columns 10 --force
)";

constexpr const char* kPensExamples = R"(Examples:
  fom pens --under 'scale(2) rotate(30)'
  fom pens --under 'skewX(40)' --width 4pt --stretch 50 --angle 30 -o pens.png
  fom pens --under 'scale(3 1)' --width 1mm --dashes 3,1 --dot-length 2mm --json

Lengths have a unit (mm, cm, in, pt, px) or are document units, of which 254,000 make an inch. Angles run from
the x axis to the y axis, which points down.
)";

/// An empty name, as an unset variable of a script gives, must not pass for standard output.
std::string CheckNamed(const std::string& name) {
    return name.empty() ? "the name of the file is empty" : std::string();
}

/// As an unset variable of a script gives it.
std::string CheckGiven(const std::string& text) {
    return text.empty() ? "the text is empty" : std::string();
}

constexpr std::size_t kMostSwatches = 100'000;
constexpr std::size_t kMostColumns = 1000;

std::string DescribeMistake(const CLI::App* app, const CLI::Error& error) {
    const std::vector<std::string> unknown = app->remaining();
    const bool hasCommand = !app->get_subcommands().empty();
    const std::string reason =
        hasCommand || unknown.empty() ? error.what() : "no command '" + unknown.front() + "'";
    return "fom: " + reason + "\nRun with --help for more information.\n";
}

class CommandLine {
public:
    CommandLine() {
        m_app.set_version_flag("--version", "fom " FOM_VERSION);
        m_app.require_subcommand(1);
        m_app.failure_message(DescribeMistake);
        m_app.footer(kExamples);
        m_import->footer(kImportExamples);
        AddPaths(m_import);
        m_import->add_flag("--json", m_options.json, "report as JSON");
        m_import->add_option("-o,--output", m_output, "write the report to a file")->check(CheckNamed);
        m_import->add_flag("--force", m_options.force, "overwrite the file");
        m_swatches->footer(kSwatchesExamples);
        AddPaths(m_swatches);
        m_swatches->add_option("-o,--output", m_output, "PNG file to draw")->required()->check(CheckNamed);
        m_swatches->add_flag("--force", m_options.force, "overwrite the file");
        m_swatches
            ->add_option("--limit", m_options.limit,
                         "draw at most so many fills and outlines: the most used, some of every kind")
            ->check(CLI::Range(std::size_t{1}, kMostSwatches))
            ->capture_default_str();
        m_swatches->add_option("--columns", m_options.columns, "swatches in a row")
            ->check(CLI::Range(std::size_t{1}, kMostColumns));
        AddPens();
        m_help->add_option("command", m_topic, "the command to explain");
    }

    std::optional<Options> Parse(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
                                 int& exitCode) {
        exitCode = kSuccess;
        try {
            m_app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            const bool answered = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
            m_app.exit(error, out, err);
            exitCode = answered ? kSuccess : kUsage;
            return std::nullopt;
        }
        if (m_help->parsed()) {
            exitCode = Help(out, err);
            return std::nullopt;
        }
        m_options.action = m_import->parsed()     ? Action::Import
                           : m_swatches->parsed() ? Action::Swatches
                                                  : Action::Pens;
        if (m_options.action == Action::Pens && !ReadPens(err)) {
            exitCode = kUsage;
            return std::nullopt;
        }
        m_options.paths.assign(m_paths.begin(), m_paths.end());
        m_options.output = m_output;
        return m_options;
    }

private:
    void AddPaths(CLI::App* command) {
        command->add_option("PATH", m_paths, "SVG files, or folders of them")->required()->check(CheckNamed);
    }

    void AddPens() {
        m_pens->footer(kPensExamples);
        const auto add = [this](const char* name, std::string& text, const char* help) {
            return m_pens->add_option(name, text, help)->check(CheckGiven);
        };
        add("--under", m_penTexts.under, "transformation of the object, in SVG syntax")->required();
        add("--width", m_penTexts.width, "width along the nib's y axis [2pt]");
        add("--stretch", m_penTexts.stretch, "the nib's x axis in per cent of the width [100]");
        add("--angle", m_penTexts.angle, "turn of the nib in degrees [0]");
        add("--dashes", m_penTexts.dashes, "dash, gap, dash, ... in dot lengths");
        add("--dot-length", m_penTexts.dotLength, "length of a dot [the width]");
        add("--kind", m_penTexts.kind, "none, solid or dot-dash [dot-dash with dashes, otherwise solid]");
        m_pens->add_option("-o,--output", m_output, "PNG file to draw")->check(CheckNamed);
        m_pens->add_flag("--json", m_options.json, "numbers as JSON");
        m_pens->add_flag("--force", m_options.force, "overwrite the file");
    }

    bool ReadPens(std::ostream& err) {
        std::string mistake;
        const std::optional<PenRequest> request = ReadPenRequest(m_penTexts, mistake);
        if (!request) {
            err << "fom: " << mistake << "\nRun with --help for more information.\n";
            return false;
        }
        m_options.pens = *request;
        return true;
    }

    const CLI::App* FindCommand() const {
        for (const CLI::App* command : {m_import, m_swatches, m_pens, m_help})
            if (command->get_name() == m_topic) return command;
        return nullptr;
    }

    int Help(std::ostream& out, std::ostream& err) const {
        const CLI::App* topic = m_topic.empty() ? &m_app : FindCommand();
        if (!topic) {
            err << "fom: no command '" << m_topic << "'\n";
            return kUsage;
        }
        out << topic->get_formatter()->make_help(topic, topic == &m_app ? "fom" : "fom " + m_topic,
                                                 CLI::AppFormatMode::Normal);
        return kSuccess;
    }

    Options m_options;
    std::vector<std::string> m_paths;
    std::string m_output;
    std::string m_topic;
    PenTexts m_penTexts;
    CLI::App m_app{
        "Reads the fills and strokes of SVG drawings into a document in which each distinct one exists once.",
        "fom"};
    CLI::App* m_import =
        m_app.add_subcommand("import", "read drawings and report what they are painted with");
    CLI::App* m_swatches = m_app.add_subcommand(
        "swatches", "draw the distinct fills and outlines of drawings as a labelled sheet");
    CLI::App* m_pens = m_app.add_subcommand("pens", "show how a pen follows a transformation of its object");
    CLI::App* m_help = m_app.add_subcommand("help", "explain a command");
};

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
                                    int& exitCode) {
    return CommandLine().Parse(argc, argv, out, err, exitCode);
}

}  // namespace command
