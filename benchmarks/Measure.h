#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

/** Ends the benchmark when something that it needs has not worked. */
inline void Require(bool bDone, const QString& strWhat)
{
    if (!bDone) {
        std::fprintf(stderr, "failed: %s\n", qPrintable(strWhat));
        std::exit(EXIT_FAILURE);
    }
}

/** How long the work takes. */
inline double Milliseconds(const std::function<void()>& fnWork)
{
    QElapsedTimer timer;
    timer.start();
    fnWork();
    return double(timer.nsecsElapsed()) / 1e6;
}

/** The value in the middle of those that were measured. */
inline double Median(std::vector<double> listValue)
{
    std::sort(listValue.begin(), listValue.end());
    return listValue[listValue.size() / 2];
}

/** Runs a program to its end. */
inline void Run(const QString& strProgram, const QStringList& listArgument)
{
    QProcess process;
    process.start(strProgram, listArgument);
    Require(process.waitForFinished(-1) && process.exitCode() == 0, strProgram);
}
