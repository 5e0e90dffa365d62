#include "vnMessage.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>
#include <cstdlib>

namespace {

vnFatalHandler fatalHandler = nullptr;

void ShowFatal(const char *boxText)
{
    if (fatalHandler)
        fatalHandler(boxText);
    else if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        QMessageBox::critical(nullptr, QString(), QString::fromUtf8(boxText), QMessageBox::Ok);
    else
        std::fputs(boxText, stderr);
}

} // namespace

void vnFatal(const char *text)
{
    char boxText[256];
    std::snprintf(boxText, sizeof boxText, "\n-ERR- %s\n\n", text);
    ShowFatal(boxText);
    std::exit(1);
}

void vnInfo(const char *text)
{
    QMessageBox::information(
        nullptr, QStringLiteral("Info"), QString::fromUtf8(text), QMessageBox::Ok);
}

void SetFatalHandler(vnFatalHandler handler)
{
    fatalHandler = handler;
}
