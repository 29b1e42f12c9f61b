#include "core/launch_mode.h"

#include <algorithm>
#include <array>
#include <span>

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
        size += row.name.size() + SEPARATOR.size();
    }
    return size;
}

// Put together by the compiler.
constexpr auto NAMES = [] {
    std::array<char, names_size()> names{};
    char *end = names.data();
    for (const launch_mode_row &row : std::span(launch_modes).first(std::size(launch_modes) - 1)) {
        end = std::ranges::copy(&row == launch_modes ? "" : SEPARATOR, end).out;
        end = std::ranges::copy(row.name, end).out;
    }
    *end = '\0';
    return names;
}();

} // namespace

const char *const launch_mode_names = NAMES.data();

const launch_mode_row &launch_mode_of(const char *text) {
    const std::string_view mode(text == nullptr ? "" : text);
    const launch_mode_row *row = launch_modes;
    while (!mode.starts_with(row->name)) {
        row++;
    }
    return *row;
}
