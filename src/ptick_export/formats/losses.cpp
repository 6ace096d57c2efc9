#include "ptick_export/formats/losses.h"

#include <cstdint>
#include <string_view>

#include "value/number_text.h"

namespace ptick::exports {

namespace {

std::string TicksOf(const TickLoss& loss) {
  const std::string ticks = DecimalText(loss.ticks.Total().AsNumber());
  return ticks + (ticks == "1" ? " tick" : " ticks");
}

void Append(std::vector<std::string>& texts, const TickLoss& loss, std::string_view name,
            std::string_view singular, std::string_view plural) {
  if (loss.count > 0) {
    std::string text = CountOf(loss.count, name);
    text += loss.count == 1 ? singular : plural;
    texts.push_back(text + ", " + TicksOf(loss) + " in all");
  }
}

void TellCount(const ExportJob& job, std::uint64_t count, std::string_view name,
               std::string_view singular, std::string_view plural) {
  if (count > 0) {
    std::string text = CountOf(count, name);
    text += count == 1 ? singular : plural;
    Tell(job, text);
  }
}

std::string CutText(const TickLoss& cut) {
  if (cut.count == 0) {
    return "";
  }
  return CountOf(cut.count, "line") + (cut.count == 1 ? " has" : " have") +
         " fractions of a tick, which are cut, " + TicksOf(cut) + " in all";
}

}  // namespace

std::vector<std::string> LossTexts(const LineLosses& losses) {
  std::vector<std::string> texts;
  if (losses.cut.count > 0) {
    texts.push_back(CutText(losses.cut));
  }
  Append(texts, losses.below_one, "line", " without a whole tick is left out",
         " without a whole tick are left out");
  Append(texts, losses.negative, "line", " with negative ticks is left out",
         " with negative ticks are left out");
  Append(texts, losses.too_large, "line", " with too many ticks is left out",
         " with too many ticks are left out");
  Append(texts, losses.unnumbered, "trace record",
         " has a line that is no number and becomes line 0",
         " have lines that are no numbers and become line 0");
  return texts;
}

std::string TellLosses(const ExportJob& job, const LineLosses& losses) {
  for (const std::string& text : LossTexts(losses)) {
    Tell(job, text);
  }
  return CutText(losses.cut);
}

void TellLosses(const ExportJob& job, const CallLosses& losses) {
  constexpr std::string_view kName = "subroutine call";
  TellCount(job, losses.cut, kName, " has a fraction of times, which is cut",
            " have fractions of times, which are cut");
  TellCount(job, losses.below_one, kName, " of less than one time is left out",
            " of less than one time are left out");
  TellCount(job, losses.negative, kName, " of negative times is left out",
            " of negative times are left out");
  TellCount(job, losses.too_large, kName, " of too many times is left out",
            " of too many times are left out");
}

void TellLosses(const ExportJob& job, const TimeTracks& line, std::string_view name) {
  TellCount(job, line.without_clocks, name, " without its clocks is left out of the time line",
            " without their clocks are left out of the time line");
  TellCount(job, line.reversed, name, " that ends before it begins is left out of the time line",
            " that end before they begin are left out of the time line");
  TellCount(job, line.out_of_range, name,
            " with clocks too far from the start is left out of the time line",
            " with clocks too far from the start are left out of the time line");
}

void TellNoTimeLine(const ExportJob& job) {
  Tell(job, "there is no time line: the profile has no 'hertz' above 0");
}

}  // namespace ptick::exports
