// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QString>

/// Pictures of views, compared to the last pixel with references that were looked at when they were made.
namespace corvane::pictures {

/// Sets what pictures depend on and the environment can tell: fonts, resolution, scale factor. Called before
/// the application object is made. `scaleFactor` is 1 or 2.
void prepareEnvironment(int scaleFactor);

enum class Theme { light, dark };

/// Sets what the application object can tell: style, palette, font, no blinking. Called again, it changes the
/// theme, and the size of the desktop's font to `fontScale` of the usual one, for widgets made from then on.
void prepareApplication(Theme theme = Theme::light, double fontScale = 1);

/// Compares `picture` with the reference `name` of this version of Qt. Empty when they are the same; else
/// what is wrong and where the picture was written, to be looked at and, if it is right, to become the
/// reference.
[[nodiscard]] QString difference(const QImage &picture, const QString &name);

} // namespace corvane::pictures
