#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/modSettings.h"

namespace state {

// What a handler knows of a run-time fault: Basic's error object and the line it was at.
struct RuntimeError {
    long number = 0;
    QString description;
    QString source;
    int line = 0;
};

// The error object of one of Basic's run-time errors: its number and its description.
RuntimeError BasicFault(int number);

// Where a procedure lives, as its handler names it.
enum class CodeUnit { Form, Module };

// The standard line of a procedure's own handler, shown in a box titled with the product name:
// "Error <n> (<description>) in procedure <name> at <line> of Form <form>" or "of Module
// <module>".
QString HandlerErrorLine(const RuntimeError& error, const QString& procedure, CodeUnit unit,
                         const QString& unitName);

// The shared error routine behind the handlers. It tells the user only in debug mode or with
// the environment variable TWVerbose set to "1"; its box keeps the family's first product as
// its title.
class RuntimeErrors {
public:
    RuntimeErrors(platform::Platform& platform, modSettings& settings);

    // The main window's debug mode, which the start-up switches on.
    void setDebugMode(bool on) { debugMode_ = on; }

    // Composes the fault's text with " Error Line: " in it and no line ends, and hands it back
    // in *message when text was empty. The first fault's time is kept in RunTime/Start. The
    // error object is cleared.
    void ReportRuntimeError(RuntimeError& error, const QString& procedureName, const QString& text,
                            QString* message);

private:
    platform::Platform& platform_;
    modSettings& settings_;
    bool debugMode_ = false;
};

}  // namespace state
