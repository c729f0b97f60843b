#pragma once

#include "Output.h"

#include <korodbc/roots/KorArray.h>

#include <array>
#include <CLI/CLI.hpp>
#include <functional>
#include <string>

/// A choice list as the user asks for it.
struct PreferredQuestion {
    static constexpr std::size_t options = 6;

    std::string list, kind;
    std::array<std::string, options> chosen; // standard, strength, set, material, class, subtype
};
/// Adds --kind and the options for what is chosen before.
void addPreferredOptions(CLI::App* command, PreferredQuestion& question);

struct PreferredAnswer {
    KorArray<KorString> names;
    std::string title; // "materials for beam"
};
/// Fills a list; `activate` makes the profiles active before. Throws when the question does not fit a list.
PreferredAnswer preferredList(const PreferredQuestion& question, const std::function<void()>& activate);
/// The lists, what they show and what they need.
Sheet preferredListNames();
