#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CoreTypes/Model/CLIReply.hpp"
#include "CoreTypes/Model/CLIRequest.hpp"
#include "CoreTypes/Model/CatalogEntry.hpp"
#include "CoreTypes/Model/Config.hpp"

namespace screenweaver::testing {

/// A date from its calendar fields, in UTC.
Date utcDate(int year, unsigned month, unsigned day, int hour, int minute, int second, long microseconds = 0);

/// The configuration document of the golden file: several groups with layouts, modes, protected
/// displays, hot keys present and absent, every Dock mode, deleted groups and every settings key.
Config sampleConfig();

/// A catalog with an entry of every family, optional fields present and absent.
std::vector<CatalogEntry> sampleCatalog();

/// Every request case, each with the name of its golden file.
std::vector<std::pair<std::string, CLIRequest>> sampleRequests();

/// Every reply case, each with the name of its golden file.
std::vector<std::pair<std::string, CLIReply>> sampleReplies();

}  // namespace screenweaver::testing
