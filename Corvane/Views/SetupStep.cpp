// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/SetupStep.h"

using namespace Qt::StringLiterals;

namespace corvane {

const std::vector<SetupStep> &setupSteps()
{
    static const std::vector<SetupStep> steps{
        {.title = u"Welcome to Quillet"_s,
         .symbolName = u"graduationcap.fill"_s,
         .detail =
             u"Quillet watches your lesson calendar and gives you clear prompts to wrap up and join your "
             "next lesson on time."_s},
        {.title = u"Allow Calendar Access"_s,
         .symbolName = u"calendar"_s,
         .detail =
             u"When Quillet asks for permission, choose Allow. Calendar access lets the app read today's "
             "lesson times and titles. It never edits your calendar."_s},
        {.title = u"Check Your Notifications"_s,
         .symbolName = u"bell.badge.fill"_s,
         .detail = u"Use Test Notification from the menu-bar icon. You should see a banner and hear a sound. "
                   "If either is missing, use the Troubleshooting section in Help."_s},
        {.title = u"Choose Your Preferences"_s,
         .symbolName = u"slider.horizontal.3"_s,
         .detail =
             u"Open Settings from the menu-bar icon to choose banner position, display time, and sound. "
             "The default centre position is designed to be hard to miss during a lesson."_s},
        {.title = u"You Are Ready"_s,
         .symbolName = u"checkmark.seal.fill"_s,
         .detail =
             u"Keep Quillet running in your menu bar while you teach. It will guide you through the next "
             "transition so you can avoid late-start penalties."_s}};
    return steps;
}

QString pageText(int index, int count)
{
    return u"Page %1 of %2"_s.arg(index + 1).arg(count);
}

} // namespace corvane
