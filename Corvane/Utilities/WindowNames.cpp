// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/WindowNames.h"

using namespace Qt::StringLiterals;

namespace corvane {

WindowName windowNames::setup()
{
    return {.identifier = u"setup"_s, .title = u"Welcome to Quillet"_s};
}

WindowName windowNames::help()
{
    return {.identifier = u"help"_s, .title = u"Quillet Help"_s};
}

WindowName windowNames::about()
{
    return {.identifier = u"about"_s, .title = u"About Quillet"_s};
}

WindowName windowNames::settings()
{
    return {.identifier = u"settings"_s, .title = u"Quillet Settings"_s};
}

WindowName windowNames::debug()
{
    return {.identifier = u"debug"_s, .title = u"Debug Window"_s};
}

} // namespace corvane
