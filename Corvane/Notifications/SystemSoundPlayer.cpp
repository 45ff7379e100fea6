// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/SystemSoundPlayer.h"

#include "Corvane/Utilities/Clock.h"

using namespace Qt::StringLiterals;

namespace corvane {

void SystemSoundPlayer::playNotificationSound() const
{
    QCoro::connect(m_sounds->play(u"Glass"_s), m_logger,
                   [logger = m_logger, sounds = m_sounds](bool started) {
                       if (started) {
                           logger->log(u"sound played name=Glass"_s);
                           return;
                       }
                       sounds->beep();
                       logger->log(u"sound fallback played name=NSSound.beep"_s);
                   });
}

} // namespace corvane
