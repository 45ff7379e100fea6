// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/LessonVerdict.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// The character in quotation marks, or its code point if it is not visible on its own.
QString characterText(const QString &character)
{
    const auto scalars = character.toUcs4();
    const char32_t scalar = scalars.isEmpty() ? 0 : static_cast<char32_t>(scalars.front());
    if (QChar::isPrint(scalar) && !QChar::isSpace(scalar)) {
        return u"“"_s + character + u"”"_s;
    }
    return u"U+"_s + QString::number(static_cast<uint>(scalar), 16).toUpper().rightJustified(4, u'0');
}

} // namespace

QString plainText(const NotALesson &verdict)
{
    switch (verdict.reason) {
    case NoLessonReason::allDay:
        return u"An all-day event"_s;
    case NoLessonReason::noLength:
        return u"It has no length"_s;
    case NoLessonReason::personalWord:
        return u"A personal word in the title: "_s + verdict.word;
    case NoLessonReason::untitled:
        return u"No platform named, and no title"_s;
    case NoLessonReason::longTitle:
        return u"No platform named, and the title is too long for a name"_s;
    case NoLessonReason::meeting:
        return u"No platform named, and the title speaks of a "_s + verdict.word;
    case NoLessonReason::unfitCharacter:
        return u"No platform named, and the title is no name: no name has "_s + characterText(verdict.word);
    case NoLessonReason::tooShort:
        return u"No platform named, and shorter than 10 minutes"_s;
    case NoLessonReason::tooLong:
        return u"No platform named, and longer than 90 minutes"_s;
    case NoLessonReason::noProfile:
        return u"No lead times are known for "_s + verdict.word;
    }
    Q_UNREACHABLE();
}

} // namespace corvane
