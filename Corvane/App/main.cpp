// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return QApplication::exec();
}
