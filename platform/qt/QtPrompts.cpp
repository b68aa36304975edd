// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtPrompts.h"

#include "base/NumberedError.h"
#include "platform/qt/InputBox.h"
#include "platform/qt/MessageBox.h"
#include "platform/qt/Placing.h"
#include "platform/qt/QtPointer.h"
#include "platform/qt/QtText.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QSplitter>
#include <QTreeView>

namespace platform::qt {

namespace {

constexpr int kCancelWasSelected = 32755;
constexpr QSize kFileDialog(840, 480);
constexpr int kPlaces = 160;  // width of the list of places

// The arrow while a box is open; the hourglass comes back afterwards.
class ArrowMeanwhile {
public:
    ArrowMeanwhile() : hourglass_(QGuiApplication::overrideCursor() != nullptr)
    {
        QtPointer().Default();
    }
    ~ArrowMeanwhile()
    {
        if (hourglass_) QtPointer().Hourglass();
    }
    ArrowMeanwhile(const ArrowMeanwhile&) = delete;
    ArrowMeanwhile& operator=(const ArrowMeanwhile&) = delete;

private:
    bool hourglass_;
};

// The window a new box stands over. Without a window manager no window is ever active; then it is
// the one in front that is to be seen.
QWidget* Owner()
{
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
    QWidget* shown = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName().startsWith("frm")) shown = window;
    return shown;
}

// On a small screen what is not needed to pick a file goes.
void FitScreen(QFileDialog& dialog)
{
    if (WithinScreen(dialog, kFileDialog) != kFileDialog)
        for (const char* name : {"sidebar", "newFolderButton", "listModeButton", "detailModeButton",
                                 "backButton", "forwardButton", "lookInLabel"})
            if (auto* piece = dialog.findChild<QWidget*>(name)) piece->hide();
    if (auto* parts = dialog.findChild<QSplitter*>())
        parts->setSizes({kPlaces, kFileDialog.width() - kPlaces});
    // Size and date tell two copies of the file apart.
    if (auto* files = dialog.findChild<QTreeView*>("treeView"))
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    dialog.resize(WithinScreen(dialog, kFileDialog));
}

}  // namespace

QStringList NameFilters(const std::string& filter)
{
    const QStringList parts = ToQt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        // "*.*" means every file, also one without a dot.
        QString patterns = parts[i + 1];
        patterns.replace("*.*", "*").replace(';', ' ');
        filters << parts[i] + " (" + patterns + ")";
    }
    return filters;
}

Answer QtPrompts::Show(const Box& box)
{
    const ArrowMeanwhile arrow;
    return MessageBox(Owner(), box).Wait();
}

std::string QtPrompts::Input(const InputPrompt& prompt)
{
    const ArrowMeanwhile arrow;
    return FromQt(InputBox(Owner(), prompt).Wait());
}

std::string QtPrompts::OpenFile(const std::string& filter)
{
    const ArrowMeanwhile arrow;
    QFileDialog dialog(Owner());
    dialog.setObjectName("CommonDialog1");
    dialog.setWindowTitle("Open");
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(NameFilters(filter));
    FitScreen(dialog);
    if (!lastFolder_.isEmpty()) dialog.setDirectory(lastFolder_);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        throw base::NumberedError(kCancelWasSelected);
    const QString file = dialog.selectedFiles().constFirst();
    lastFolder_ = QFileInfo(file).absolutePath();
    return FromQt(file);
}

}  // namespace platform::qt
