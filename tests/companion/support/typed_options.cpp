#include "companion/support/typed_options.h"

#include <gtest/gtest.h>

#include <string_view>

namespace ptick::companion::testing {

void Describe(CommandLine& line, Parsed& parsed) {
  line.Usage("[OPTION]... OLD NEW")
      .Usage("[OPTION]... OLD... --vs NEW...")
      .Summary("Says what became slower.")
      .Flag("-a,--all", "show all", parsed.all)
      .Text("-t,--title", "TEXT", "a title", parsed.title)
      .Texts("-f", "DIR", "a folder", parsed.folders)
      .WholeNumber("--context", "N", "lines around", {.least = 0, .most = 100}, parsed.context)
      .Choice<By>("--by", "WHAT", "what a row is", {{"line", By::kLine}, {"program", By::kProgram}},
                  parsed.by)
      .Value("--fail-slower", "PERCENT", "fail",
             [&parsed](std::string_view value) {
               if (value != "5") {
                 throw UsageError("a percentage");
               }
               parsed.percent = 5;
             })
      .Separator("--vs", "divide", parsed.position)
      .Operands(parsed.operands, 1, 3);
}

std::string Outcome(const std::vector<std::string>& arguments) {
  Parsed parsed;
  CommandLine line("ptick-diff");
  Describe(line, parsed);
  try {
    switch (line.Parse(arguments)) {
      case CommandLine::Wish::kHelp:
        return "help";
      case CommandLine::Wish::kVersion:
        return "version";
      case CommandLine::Wish::kRun:
        break;
    }
  } catch (const UsageError& error) {
    return std::string("wrong: ") + error.what();
  }
  std::string text;
  const auto add = [&text](bool is_so, const std::string& word) {
    if (is_so) {
      text += (text.empty() ? "" : " ") + word;
    }
  };
  add(parsed.all, "all");
  add(parsed.title.has_value(), "title=" + parsed.title.value_or(""));
  for (const std::string& folder : parsed.folders) {
    add(true, "f=" + folder);
  }
  add(parsed.context != 3, "context=" + std::to_string(parsed.context));
  add(parsed.by == By::kProgram, "by=program");
  add(parsed.percent.has_value(), "percent");
  const CommonOptions& common = line.Common();
  add(common.output.has_value(), "output=" + common.output.value_or(""));
  add(common.is_quiet, "quiet");
  add(common.color == ColorWhen::kAlways, "always");
  add(common.color == ColorWhen::kNever, "never");
  add(true, "|");
  for (std::size_t i = 0; i <= parsed.operands.size(); ++i) {
    add(parsed.position == i, "--vs");
    if (i < parsed.operands.size()) {
      add(true, "<" + parsed.operands[i] + ">");
    }
  }
  return text;
}

void Check(const std::vector<Typed>& rows) {
  for (const Typed& row : rows) {
    std::string typed;
    for (const std::string& argument : row.arguments) {
      typed += " '" + argument + "'";
    }
    EXPECT_EQ(Outcome(row.arguments), row.want) << typed;
  }
}

}  // namespace ptick::companion::testing
