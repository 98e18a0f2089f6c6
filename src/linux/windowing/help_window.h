// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QUrl>
#include <QWidget>
#include <functional>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace corvane {

/// Shows the manual: its pages, the list of their headings, and a search through all of them.
class HelpWindow : public QWidget {
public:
    /// `manual`: the path of its first page; the other HTML files of that folder are its further pages. A manual that
    /// is not there is said to be missing.
    explicit HelpWindow(const QString& manual);

    std::function<void()> closed;  ///< called when it is closed, inside its own handler: it must outlive the call

    /// Goes to the next place of the searched text, or the one before; round through all pages. False: there is none.
    bool search(bool backward);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildWidgets();
    void listHeadings(const QUrl& page);
    void open(const QTreeWidgetItem& heading);
    void showPage(const QUrl& page);
    void searchAsTyped();
    bool findInPages(bool backward);
    void markMatches();

    QList<QUrl> pages_;
    QLineEdit* field_ = nullptr;
    QLabel* answer_ = nullptr;  ///< what the search says
    QTreeWidget* contents_ = nullptr;
    QTextBrowser* text_ = nullptr;
};

}  // namespace corvane
