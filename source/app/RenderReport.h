#pragma once

#include "app/RenderTask.h"

#include <nlohmann/json.hpp>

/** A rendering in words for people, and as JSON for scripts. */
namespace RenderReport
{
void print (const RenderResult& result);
[[nodiscard]] nlohmann::json toJson (const RenderResult& result);
} // namespace RenderReport
