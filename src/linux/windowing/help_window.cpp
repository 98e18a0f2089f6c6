// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/help_window.h"

#include <QAbstractTextDocumentLayout>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace corvane {

namespace {

constexpr QSize kWindowSize(1000, 700);
constexpr int kContentsWidth = 220;
constexpr int kPageRole = Qt::UserRole;       ///< a heading's page
constexpr int kBlockRole = Qt::UserRole + 1;  ///< and its paragraph
constexpr int kContentsLevel = 2;             ///< headings of this level are listed
const QColor kMatch(0xFF, 0xE0, 0x8A);

/// The manual is written for a light ground, whatever the desktop's colours.
QPalette paper(QPalette palette) {
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, QColor(0x1F, 0x29, 0x33));
    return palette;
}

QString wholeFile(const QUrl& page) {
    QFile file(page.toLocalFile());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

HelpWindow::HelpWindow(const QString& manual) {
    setWindowTitle(QStringLiteral("Corvane - Help"));
    resize(kWindowSize);
    buildWidgets();

    const QFileInfo first(manual);
    if (manual.isEmpty() || !first.isFile()) {
        text_->setPlainText(QStringLiteral("The manual is not installed."));
        return;
    }
    pages_.append(QUrl::fromLocalFile(first.absoluteFilePath()));
    for (const QFileInfo& other : first.dir().entryInfoList({QStringLiteral("*.html")}, QDir::Files, QDir::Name)) {
        if (other.fileName() != first.fileName()) pages_.append(QUrl::fromLocalFile(other.absoluteFilePath()));
    }
    for (const QUrl& page : pages_) listHeadings(page);
    text_->setSource(pages_.front());
}

void HelpWindow::buildWidgets() {
    field_ = new QLineEdit;
    field_->setPlaceholderText(QStringLiteral("Search"));
    field_->setAccessibleName(QStringLiteral("Search"));
    field_->setClearButtonEnabled(true);
    answer_ = new QLabel;
    auto* const back = new QPushButton(QStringLiteral("Back"));
    auto* const before = new QPushButton(QStringLiteral("Previous"));
    auto* const next = new QPushButton(QStringLiteral("Next"));
    back->setEnabled(false);

    auto* const bar = new QHBoxLayout;
    bar->addWidget(back);
    bar->addStretch();
    bar->addWidget(answer_);
    bar->addWidget(field_);
    bar->addWidget(before);
    bar->addWidget(next);

    contents_ = new QTreeWidget;
    contents_->setHeaderHidden(true);
    contents_->setAccessibleName(QStringLiteral("Contents"));
    text_ = new QTextBrowser;
    text_->setPalette(paper(text_->palette()));
    text_->setAccessibleName(QStringLiteral("Manual"));
    auto* const halves = new QSplitter;
    halves->addWidget(contents_);
    halves->addWidget(text_);
    halves->setStretchFactor(1, 1);
    halves->setSizes({kContentsWidth, kWindowSize.width() - kContentsWidth});

    auto* const whole = new QVBoxLayout(this);
    whole->addLayout(bar);
    whole->addWidget(halves, 1);

    QObject::connect(back, &QPushButton::clicked, text_, &QTextBrowser::backward);
    QObject::connect(text_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    QObject::connect(text_, &QTextBrowser::sourceChanged, this, [this] { markMatches(); });
    QObject::connect(before, &QPushButton::clicked, this, [this] { search(true); });
    QObject::connect(next, &QPushButton::clicked, this, [this] { search(false); });
    QObject::connect(field_, &QLineEdit::returnPressed, this, [this] { search(false); });
    QObject::connect(field_, &QLineEdit::textChanged, this, [this] { searchAsTyped(); });
    QObject::connect(contents_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { open(*item); });
    QObject::connect(contents_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { open(*item); });
    text_->setFocus();
}

void HelpWindow::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    if (closed) closed();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_F3) {
        search(event->modifiers().testFlag(Qt::ShiftModifier));
    } else if (event->matches(QKeySequence::Find)) {
        field_->setFocus();
        field_->selectAll();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void HelpWindow::listHeadings(const QUrl& page) {
    QTextDocument document;
    document.setHtml(wholeFile(page));
    auto* const top = new QTreeWidgetItem(contents_);
    top->setText(0, document.metaInformation(QTextDocument::DocumentTitle).section(QStringLiteral(" - "), -1));
    top->setData(0, kPageRole, page);
    top->setData(0, kBlockRole, 0);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() != kContentsLevel) continue;
        auto* const heading = new QTreeWidgetItem(top);
        heading->setText(0, block.text().simplified());
        heading->setData(0, kPageRole, page);
        heading->setData(0, kBlockRole, block.blockNumber());
    }
    top->setExpanded(true);
}

void HelpWindow::showPage(const QUrl& page) {
    if (text_->source().adjusted(QUrl::RemoveFragment) != page) text_->setSource(page);
}

void HelpWindow::open(const QTreeWidgetItem& heading) {
    showPage(heading.data(0, kPageRole).toUrl());
    const QTextBlock block = text_->document()->findBlockByNumber(heading.data(0, kBlockRole).toInt());
    if (!block.isValid()) return;
    text_->setTextCursor(QTextCursor(block));
    const QRectF place = text_->document()->documentLayout()->blockBoundingRect(block);
    text_->verticalScrollBar()->setValue(block.blockNumber() == 0 ? 0 : static_cast<int>(place.top()));
}

bool HelpWindow::findInPages(bool backward) {
    const QTextDocument::FindFlags way = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const auto count = pages_.size();
    auto page = std::max<qsizetype>(0, pages_.indexOf(text_->source().adjusted(QUrl::RemoveFragment)));
    const auto first = page;
    const QTextCursor stood = text_->textCursor();
    for (qsizetype tries = 0; tries <= count; ++tries) {
        if (text_->find(field_->text(), way)) return true;
        if (count == 0) return false;
        page = (page + (backward ? count - 1 : 1)) % count;
        showPage(pages_[page]);
        text_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    }
    showPage(pages_[first]);
    text_->setTextCursor(stood);
    return false;
}

bool HelpWindow::search(bool backward) {
    if (field_->text().isEmpty()) {
        answer_->clear();
        return false;
    }
    const bool found = findInPages(backward);
    answer_->setText(found ? QString() : QStringLiteral("Not found"));
    return found;
}

void HelpWindow::searchAsTyped() {
    // From where the last match begins, so that a longer text stays on it.
    QTextCursor cursor = text_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    text_->setTextCursor(cursor);
    search(false);
    markMatches();
}

void HelpWindow::markMatches() {
    QList<QTextEdit::ExtraSelection> marks;
    QTextEdit::ExtraSelection mark;
    mark.format.setBackground(kMatch);
    const QString text = field_->text();
    if (!text.isEmpty()) {
        QTextDocument* const document = text_->document();
        mark.cursor = document->find(text);
        while (!mark.cursor.isNull()) {
            marks.append(mark);
            mark.cursor = document->find(text, mark.cursor);
        }
    }
    text_->setExtraSelections(marks);
}

}  // namespace corvane
