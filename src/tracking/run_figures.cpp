#include "tracking/run_figures.h"

#include "platform/agreed/record_layouts.h"

namespace tracking {

void RunFigures::Take(const platform::RecordSet& runs) {
  for (std::size_t figure = 0; figure < kFigures.size(); ++figure)
    values[figure].SetCaption(runs.Text(kFigures[figure].column));
}

std::string RunCaption(std::string_view what, const platform::RecordSet& runs) {
  auto caption = std::string(what) + " - Batch Sequence # " + runs.Text("BTCH_SEQ_NBR");
  if (runs.Text("BTCH_STATUS") != platform::run_status::kSuccessful)
    caption += " (Letters assigned to next batch process)";
  return caption;
}

}  // namespace tracking
