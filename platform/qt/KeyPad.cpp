// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/KeyPad.h"

#include "platform/qt/ShopStyle.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

namespace platform::qt {

namespace {

constexpr int kGap = 6;
constexpr int kDigitColumns = 3;
constexpr int kDigitWidth = 84;
constexpr int kLetterColumns = 10;
constexpr int kDigitPage = 0, kLetterPage = 1;

// The page's layout, kept in the middle of the room there is.
QGridLayout* GridOf(QWidget* page)
{
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(kGap);
    grid->setAlignment(Qt::AlignCenter);
    return grid;
}

void Put(QGridLayout* grid, QWidget* key, int place, int columns)
{
    grid->addWidget(key, place / columns, place % columns);
}

}  // namespace

KeyPad::KeyPad(QLineEdit* line, QWidget* parent)
    : QWidget(parent), line_(line), pages_(new QStackedWidget(this))
{
    setObjectName("keyPad");
    pages_->setObjectName("pages");
    pages_->addWidget(Digits());
    pages_->addWidget(Letters());
    auto* whole = new QGridLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(pages_);
}

QWidget* KeyPad::Digits()
{
    auto* page = new QWidget(pages_);
    page->setObjectName("digits");
    QGridLayout* grid = GridOf(page);
    int place = 0;
    for (const QChar digit : QStringLiteral("123456789"))
        Put(grid, TypingKey(digit, page), place++, kDigitColumns);
    Put(grid, TurningKey("ABC", page, kLetterPage), place++, kDigitColumns);
    Put(grid, TypingKey("0", page), place++, kDigitColumns);
    Put(grid, ErasingKey(page), place, kDigitColumns);
    for (QPushButton* key : page->findChildren<QPushButton*>())
        key->setFixedWidth(kDigitWidth);
    return page;
}

QWidget* KeyPad::Letters()
{
    auto* page = new QWidget(pages_);
    page->setObjectName("letters");
    QGridLayout* grid = GridOf(page);
    int place = 0;
    for (const QChar letter : QStringLiteral("qwertyuiopasdfghjklzxcvbnm")) {
        QPushButton* key = TypingKey(letter, page);
        key->setProperty("letter", true);
        Put(grid, key, place++, kLetterColumns);
    }
    QPushButton* shift = Key("Shift", page);
    shift->setCheckable(true);
    connect(shift, &QPushButton::toggled, this, &KeyPad::Shift);
    Put(grid, shift, place++, kLetterColumns);
    Put(grid, TurningKey("123", page, kDigitPage), place++, kLetterColumns);
    Put(grid, ErasingKey(page), place, kLetterColumns);
    return page;
}

QPushButton* KeyPad::Key(const QString& caption, QWidget* page)
{
    auto* key = new QPushButton(caption, page);
    key->setObjectName("key" + caption);
    key->setAccessibleDescription("key" + caption);
    key->setFocusPolicy(Qt::NoFocus);
    key->setAutoDefault(false);
    const int width = caption.size() == 1 ? 0 : key->fontMetrics().horizontalAdvance(caption) + 20;
    key->setFixedSize(std::max(kButtonHeight, width), kButtonHeight);
    return key;
}

QPushButton* KeyPad::TypingKey(const QString& caption, QWidget* page)
{
    QPushButton* key = Key(caption, page);
    connect(key, &QPushButton::clicked, this, [this, key] { line_->insert(key->text()); });
    return key;
}

QPushButton* KeyPad::TurningKey(const QString& caption, QWidget* page, int to)
{
    QPushButton* key = Key(caption, page);
    connect(key, &QPushButton::clicked, this, [this, to] { pages_->setCurrentIndex(to); });
    return key;
}

QPushButton* KeyPad::ErasingKey(QWidget* page)
{
    QPushButton* key = Key("Erase", page);
    key->setAutoRepeat(true);
    connect(key, &QPushButton::clicked, line_, &QLineEdit::backspace);
    return key;
}

void KeyPad::Shift(bool capitals)
{
    for (QPushButton* key : findChildren<QPushButton*>())
        if (key->property("letter").toBool())
            key->setText(capitals ? key->text().toUpper() : key->text().toLower());
}

}  // namespace platform::qt
