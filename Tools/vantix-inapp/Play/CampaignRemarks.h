#pragma once

#include "CampaignCheck/CampaignCheck.h"
#include "Tools/vantix-inapp/Scenario/ScenarioFile.h"

#include <optional>
#include <string>

namespace vantix {

class Backend;
class EventLines;
class LineWriter;

/// Prints what a device would do with the campaigns of a scenario that their author may not mean. A simulation is
/// running; main thread only.
class CampaignRemarks {
public:
    CampaignRemarks(const Scenario& scenario, EventLines& events, LineWriter& lines);

    /// Before the line is played; null without a back end.
    void remark(const Scenario::Line& line, const Backend* backend);

private:
    std::string file_;
    CheckOptions options_;
    CampaignChecker checker_;
    EventLines& events_;
    LineWriter& lines_;
};

}  // namespace vantix
