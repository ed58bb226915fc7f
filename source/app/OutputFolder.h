#pragma once

#include "app/RenderTask.h"

#include <string>
#include <vector>

/** Many files rendered into one folder, each under its own name, with the ending of what it becomes. */
namespace OutputFolder
{
/** Makes the folder if it is not there. Throws CommandError where that fails, where two files would get one name, or
    where a result would take the place of another input. A file whose encoding cannot be told yet, since it cannot be
    read, keeps its name.
    @param common what all requests share */
[[nodiscard]] std::vector<RenderRequest>
requestsFor (const std::vector<std::string>& inputs, const std::string& folder, const RenderRequest& common);
} // namespace OutputFolder
