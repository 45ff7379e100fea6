// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Style.h"
#include "Corvane/Look/Contrast.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/SwitchPainting.h"
#include "tests/support/Pictures.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <memory>

using namespace corvane;
using namespace corvane::look;
using namespace Qt::StringLiterals;
using pictures::Theme;

namespace {

/// Each control in four states: normal, hovered, pressed and disabled.
std::unique_ptr<QWidget> gallery()
{
    auto *rows = column(space::medium, {});
    const auto addRow = [&](const auto &make) {
        auto *line = row(space::large, {});
        for (int state = 0; state < 4; ++state) {
            QWidget *control = make();
            control->setAttribute(Qt::WA_UnderMouse, state == 1 || state == 2);
            if (auto *button = qobject_cast<QAbstractButton *>(control)) {
                button->setDown(state == 2);
            }
            control->setEnabled(state != 3);
            line->addWidget(control);
        }
        rows->addLayout(line);
    };
    addRow([] { return pushButton(u"Bordered"_s, Role::bordered, u"trash"_s); });
    addRow([] { return pushButton(u"Prominent"_s, Role::prominent, u"plus"_s); });
    addRow([] { return pushButton(u"Command"_s, Role::command); });
    addRow([] { return pushButton(u"quiet.link"_s, Role::quietLink); });
    addRow([] { return new QCheckBox(u"Off"_s); });
    addRow([] {
        auto *box = new QCheckBox(u"On"_s);
        box->setChecked(true);
        return box;
    });
    addRow([] { return picker(u"Picker"_s, {u"Center"_s, u"Top"_s}); });
    addRow([] { return textField(u"Placeholder"_s); });
    addRow([] { return searchField(u"Search"_s); });
    addRow([] { return new SegmentedControl(u"Segments"_s, {u"One"_s, u"Two"_s}); });
    auto gallery = std::make_unique<QWidget>();
    gallery->setLayout(padded({space::large, space::large, space::large, space::large}, rows));
    gallery->resize(620, gallery->sizeHint().height());
    return gallery;
}

QString themeName(Theme theme)
{
    return theme == Theme::light ? u"light"_s : u"dark"_s;
}

} // namespace

class StyleTest final : public QObject {
    Q_OBJECT

public:
    explicit StyleTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    void comparePicture(const QImage &picture, const QString &name) const
    {
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(picture, u"style-"_s + name + suffix);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    static void showActive(QWidget &window)
    {
        window.show();
        QTRY_VERIFY(window.isActiveWindow());
    }

    int m_scaleFactor;

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void everyControlLooksAsItShould_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::newRow("light") << Theme::light;
        QTest::newRow("dark") << Theme::dark;
    }

    void everyControlLooksAsItShould()
    {
        QFETCH(Theme, theme);
        pictures::prepareApplication(theme);
        const auto controls = gallery();
        comparePicture(controls->grab().toImage(), u"controls-"_s + themeName(theme));
    }

    void aListOfChoicesLooksAsItShould_data() { everyControlLooksAsItShould_data(); }

    void aListOfChoicesLooksAsItShould()
    {
        QFETCH(Theme, theme);
        pictures::prepareApplication(theme);
        QWidget window;
        auto *choices = picker(u"Position"_s, {u"Center"_s, u"Top"_s, u"Bottom"_s, u"Top Left"_s});
        choices->setCurrentIndex(1);
        window.setLayout(padded({space::wide, space::wide, space::wide, space::wide}, row(0, {choices})));
        showActive(window);
        choices->showPopup();
        QWidget *list = QApplication::activePopupWidget();
        if (list == nullptr) {
            QFAIL("no list is shown");
        }
        QVERIFY(list->testAttribute(Qt::WA_TranslucentBackground));
        // Another row than the chosen one is current, as after an arrow key.
        choices->view()->setCurrentIndex(choices->model()->index(2, 0));
        comparePicture(list->grab().toImage(), u"list-"_s + themeName(theme));
        choices->hidePopup();
    }

    void theFocusRingKeepsADistance()
    {
        QWidget window;
        auto *one = pushButton(u"One"_s);
        auto *other = pushButton(u"Other"_s);
        window.setLayout(padded({space::large, space::large, space::large, space::large},
                                row(space::large, {one, other})));
        showActive(window);
        one->setFocus();
        QTest::keyClick(one, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), other);
        const auto *ring = window.findChild<QFocusFrame *>();
        QVERIFY(ring != nullptr && ring->isVisible());
        QCOMPARE(ring->geometry(), other->geometry().adjusted(-4, -4, 4, 4));
        const QImage picture = window.grab().toImage();
        const auto at = [&](QPoint place) { return picture.pixelColor(place * m_scaleFactor); };
        const QPoint edge(other->x(), other->geometry().center().y());
        QCOMPARE(at(edge - QPoint(3, 0)).rgb(), color(Ink::accent, window.palette()).rgb());
        QCOMPARE(at(edge - QPoint(1, 0)).rgb(), window.palette().color(QPalette::Window).rgb());
    }

    void aControlThatIsScrolledIntoViewHasItsFocusRing()
    {
        auto *content = new QWidget;
        auto *one = textField(u"One"_s);
        auto *other = textField(u"Other"_s);
        auto *lines = column(400, {one, other});
        content->setLayout(padded({space::large, space::large, space::large, space::large}, lines));
        QScrollArea area;
        area.setWidgetResizable(true);
        area.setWidget(content);
        area.resize(300, 200);
        showActive(area);
        one->setFocus();
        other->setFocus();
        area.ensureWidgetVisible(other);
        const auto *ring = area.findChild<QFocusFrame *>();
        QVERIFY(ring != nullptr && ring->isVisible());
        QCOMPARE(ring->visibleRegion().boundingRect(), ring->rect());
        QCOMPARE(ring->mapToGlobal(QPoint()), other->mapToGlobal(QPoint(-4, -4)));
    }

    void aClickShowsNoFocusRing()
    {
        QWidget window;
        auto *button = pushButton(u"One"_s);
        button->setFocusPolicy(Qt::StrongFocus);
        window.setLayout(row(0, {button}));
        showActive(window);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(QApplication::focusWidget(), button);
        const auto *ring = window.findChild<QFocusFrame *>();
        QVERIFY(ring == nullptr || !ring->isVisible());
    }

    void aHeldEnterPressesAButtonOnce()
    {
        QWidget window;
        auto *button = pushButton(u"One"_s);
        window.setLayout(row(0, {button}));
        showActive(window);
        button->setFocus();
        const QSignalSpy pressed(button, &QAbstractButton::clicked);
        QTest::keyClick(button, Qt::Key_Return);
        QCOMPARE(pressed.size(), 1);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, true);
        QCoreApplication::sendEvent(button, &held);
        QCOMPARE(pressed.size(), 1);
    }

    void aKnobSlidesWhenItsSwitchIsToggled()
    {
        QWidget window;
        auto *box = new QCheckBox(u"On"_s);
        window.setLayout(row(0, {box}));
        showActive(window);
        QCOMPARE(KnobSlide::position(*box), 0.0);
        box->click();
        QVERIFY(KnobSlide::position(*box) < 0.5);
        QTRY_COMPARE(KnobSlide::position(*box), 1.0);
    }

    void aKnobJumpsWithoutMotion()
    {
        qobject_cast<Style *>(QApplication::style())->follow({.reducesMotion = true});
        QWidget window;
        auto *box = new QCheckBox(u"On"_s);
        window.setLayout(row(0, {box}));
        showActive(window);
        box->click();
        QCOMPARE(KnobSlide::position(*box), 1.0);
    }

    void aScrollBarDoesNotNarrowTheContent()
    {
        QScrollArea area;
        area.setFrameShape(QFrame::NoFrame);
        auto *content = new QWidget;
        area.setWidgetResizable(true);
        area.setWidget(content);
        area.resize(200, 100);
        area.show();
        QCOMPARE(content->width(), 200);
        content->setMinimumHeight(500);
        QTRY_VERIFY(area.verticalScrollBar()->isVisible());
        QCOMPARE(area.verticalScrollBar()->maximum(), 400);
        QCOMPARE(content->width(), 200);
    }

    void escapeClearsASearchAndThenPassesToItsWindow()
    {
        QWidget window;
        auto *search = searchField(u"Search"_s);
        window.setLayout(row(0, {search}));
        (void)window.grab();
        search->setText(u"zoom"_s);
        QTest::keyClick(search, Qt::Key_Escape);
        QCOMPARE(search->text(), QString());
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(search, &escape);
        QVERIFY(!escape.isAccepted());
    }

    void theApplicationPaletteUsesTheAccent()
    {
        const QPalette palette = QApplication::palette();
        QCOMPARE(palette.color(QPalette::Highlight), accentGround(palette));
        QCOMPARE(palette.color(QPalette::HighlightedText), QColor(Qt::white));
        QVERIFY(contrast(palette.color(QPalette::PlaceholderText), fieldColor(palette)) >= textContrast);
    }
};

QUILLET_TEST(StyleTest, runViewTest<StyleTest>);

#include "StyleTest.moc"
