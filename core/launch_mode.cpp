#include "core/launch_mode.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "jli/text.h"

constexpr launch_mode_row launch_modes[] = {
    {.name = DEFAULT_LAUNCH_MODE,
     .java_home = &container_home,
     .paths_move_to = &container_home,
     .rules = argument_rules::advanced},
    {.name = "legacy", .java_home = &container_home, .paths_move_to = &container_home},
    {.name = "patch",
     .opens_internal_packages = true,
     .arguments_title = "PATCH LAUNCH MODE ARGS:\n-----------------------\n",
     .agent_environment = "-Dcom.quorvel.AgentEnvironment=patch"},
    {.name = "secure",
     .opens_internal_packages = true,
     .arguments_title = "SECURE LAUNCH MODE ARGS:\n------------------------\n"},
    {.name = "ri", .rules = argument_rules::ri, .has_agents = false, .process = "RI"},
    {.name = "", .paths_move_to = &container_home},
};

namespace {

constexpr std::string_view SEPARATOR = ", ";

constexpr size_t names_size() {
    size_t size = 0;
    for (const launch_mode_row &row : launch_modes) {
        size += std::string_view(row.name).size() + SEPARATOR.size();
    }
    return size;
}

// Put together by the compiler.
constexpr auto NAMES = [] {
    std::array<char, names_size()> names{};
    char *end = names.data();
    for (const launch_mode_row &row : std::span(launch_modes).first(std::size(launch_modes) - 1)) {
        end = std::ranges::copy(&row == launch_modes ? "" : SEPARATOR, end).out;
        end = std::ranges::copy(std::string_view(row.name), end).out;
    }
    *end = '\0';
    return names;
}();

} // namespace

const char *const launch_mode_names = NAMES.data();

const launch_mode_row &launch_mode_of(const char *text) {
    const launch_mode_row *row = launch_modes;
    while (!begins_with(text == nullptr ? "" : text, row->name)) {
        row++;
    }
    return *row;
}
