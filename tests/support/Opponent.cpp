// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

// A full-screen program that, like a video call, banners must stay above. It prints each event that it
// receives as a line on standard output: "ready" when it gets the keyboard focus, "click X Y", "key N".
//
//   --above      asks to be kept above other windows
//   --raise      raises itself repeatedly
//   --activate   activates itself repeatedly
//   --color C    its fill colour

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void say(const QString &line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

class Opponent final : public QWidget {
public:
    explicit Opponent(const QColor &color) : m_color(color) {}

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), m_color); }
    void mousePressEvent(QMouseEvent *event) override
    {
        const QPoint at = event->globalPosition().toPoint();
        say(u"click %1 %2"_s.arg(at.x()).arg(at.y()));
    }
    void keyPressEvent(QKeyEvent *event) override { say(u"key %1"_s.arg(event->key())); }
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
            m_wasActive = true;
            say(u"ready"_s);
        }
    }

public:
    [[nodiscard]] bool wasActive() const { return m_wasActive; }

private:
    bool m_wasActive = false;
    QColor m_color;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const qsizetype color = arguments.indexOf(u"--color"_s);
    Opponent window(color >= 0 && color + 1 < arguments.size() ? QColor(arguments[color + 1])
                                                               : QColor(u"#a0c0e0"_s));
    if (arguments.contains(u"--above"_s)) {
        window.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    constexpr int restless = 300;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] {
        if (arguments.contains(u"--raise"_s)) {
            window.raise();
        }
        // A window manager that has just started may miss the first request; once the window was active, no
        // more are sent.
        if (arguments.contains(u"--activate"_s) || !window.wasActive()) {
            window.activateWindow();
        }
    });
    timer.start(restless);
    window.showFullScreen();
    window.activateWindow();
    return QApplication::exec();
}
