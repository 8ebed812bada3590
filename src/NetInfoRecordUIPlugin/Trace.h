// The library's trace lines. A call site names the line it writes; how each is worded is decided here, and a line that
// nobody asked for costs a branch.
//
// Every unit of the library defines a static `trace::Unit s_traceUnit` and writes TRACE(trace::Enter).
#ifndef NETINFORECORD_TRACE_H
#define NETINFORECORD_TRACE_H

#include <QByteArray>
#include <QTime>
#include <QtDebug>
#include <QtGlobal>

#if QT_VERSION >= 0x050000
#include <QLoggingCategory>
#endif

namespace trace {

/// A source file as its lines name it.
struct Unit {
    const char *path;      ///< As seen from the build folder, without the suffix.
    const char *buildTime; ///< Stands for the time of day in the "File" lines; null: they carry the time of day.
};

/// Every line there is, in the order of the texts in detail::formatOf(). People filter old logs by these texts, so they
/// are kept to the letter.
enum Line {
    StartOf,
    EndOf,
    EmptyString,
    StartFile,
    StartFileColon,
    EndFile,
    EndFileBlank,
    NotYetInitialized,
    Start,
    End,
    Enter,
    Entered,
    Exit,
    TimedEnter,
    TimedExit,
    TimedStart,
    TimedStartPadded,
    TimedEnd,
    TimedEndPadded,
    ArgIsNull,
    CallingGetAll,
    CallingGetLast,
    CallingRemove,
    FinishedGetAll,
    FinishedGetLast,
    FinishedRemove,
    StatusAfterConnection
};

inline bool isEnabled()
{
#if defined(QT_NO_DEBUG_OUTPUT)
    return false;
#elif QT_VERSION >= 0x050000
    return QLoggingCategory::defaultCategory()->isDebugEnabled();
#else
    return true;
#endif
}

namespace detail {

/// What a line's text takes, in this order.
enum Arguments {
    PathFunctionLine,
    PathFunctionLineTime,
    PathFunctionLineFileTime, ///< The unit's build time instead of the time of day, where it has one.
    TimePathFunctionLine,
    TimePathFunctionLineNumber,
    PathFunctionNumber
};

struct Format {
    const char *text;
    Arguments arguments;
};

inline const Format &formatOf(Line line)
{
    static const Format formats[] = {
        {"Start of %s: %s: %d: ", PathFunctionLine},
        {"End of %s: %s: %d: ", PathFunctionLine},
        {"Empty String %s: %s: %d: ", PathFunctionLine},
        {"Start File: %s %s: %d: %s:", PathFunctionLineFileTime},
        {"Start File: %s: %s: %d: %s:", PathFunctionLineFileTime},
        {"End File: %s: %s: %d: %s:", PathFunctionLineFileTime},
        {"End File: %s %s: %d: %s:", PathFunctionLineFileTime},
        {"AccumulateDlg is not yet initialized: %s %s: %d: %s:", PathFunctionLineFileTime},
        {"Start: %s %s: %d: %s:", PathFunctionLineTime},
        {"End: %s %s: %d: %s:", PathFunctionLineTime},
        {"Enter: %s: %s: %d: %s:", PathFunctionLineTime},
        {"Entered: %s: %s: %d: %s:", PathFunctionLineTime},
        {"Exit: %s: %s: %d: %s:", PathFunctionLineTime},
        {"Enter: %s: %s: %s %d", TimePathFunctionLine},
        {"Exit: %s: %s: %s %d", TimePathFunctionLine},
        {"Start: %s: %s: %s %d", TimePathFunctionLine},
        {"Start  : %s: %s: %s %d", TimePathFunctionLine},
        {"End: %s: %s: %s %d", TimePathFunctionLine},
        {"End  : %s: %s: %s %d", TimePathFunctionLine},
        {"Arg is NULL: %s: %s: %s %d", TimePathFunctionLine},
        {"=======> %s: %s: %s: %d: Calling ZELK_Statistics_GetAllConnRecord()", TimePathFunctionLine},
        {"=======> %s: %s: %s: %d: Calling ZELK_Statistics_GetLastConnRecord()", TimePathFunctionLine},
        {"=======> %s: %s: %s: %d: Calling ZELK_Statistics_ConnRecord_RemoveRecord ()", TimePathFunctionLine},
        {"<======= %s: %s: %s: %d: Finished ZELK_Statistics_GetAllConnRecord(), retVal=%ld",
         TimePathFunctionLineNumber},
        {"<======= %s: %s: %s: %d: Finished ZELK_Statistics_GetLastConnRecord(), retVal=%ld",
         TimePathFunctionLineNumber},
        {"<======= %s: %s: %s: %d: FinishedZELK_Statistics_ConnRecord_RemoveRecord (), retVal=%ld",
         TimePathFunctionLineNumber},
        {"Status after connection: %s %s %d", PathFunctionNumber},
    };
    return formats[line];
}

inline QByteArray timeOfDay()
{
    return QTime::currentTime().toString(QLatin1String("hh:mm:ss:zzz")).toLocal8Bit();
}

} // namespace detail

/// Writes \a line for \a function of \a unit; \a number is a service's result code or a status where the line has one.
inline void write(Line line, const Unit &unit, const char *function, int sourceLine, long number = 0)
{
    const detail::Format &format = detail::formatOf(line);
    const char *const text = format.text;
    const bool hasBuildTime = format.arguments == detail::PathFunctionLineFileTime && unit.buildTime;
    const QByteArray time = hasBuildTime ? QByteArray(unit.buildTime) : detail::timeOfDay();
    switch (format.arguments) {
    case detail::PathFunctionLine:
        qDebug(text, unit.path, function, sourceLine);
        break;
    case detail::PathFunctionLineTime:
    case detail::PathFunctionLineFileTime:
        qDebug(text, unit.path, function, sourceLine, time.constData());
        break;
    case detail::TimePathFunctionLine:
        qDebug(text, time.constData(), unit.path, function, sourceLine);
        break;
    case detail::TimePathFunctionLineNumber:
        qDebug(text, time.constData(), unit.path, function, sourceLine, number);
        break;
    case detail::PathFunctionNumber:
        qDebug(text, unit.path, function, static_cast<int>(number));
        break;
    }
}

} // namespace trace

#define TRACE(line)                                                                                                    \
    do {                                                                                                               \
        if (trace::isEnabled())                                                                                        \
            trace::write((line), s_traceUnit, __func__, __LINE__);                                                     \
    } while (false)

/// A line that carries a number: a result code or a status.
#define TRACE_NUMBER(line, number)                                                                                     \
    do {                                                                                                               \
        if (trace::isEnabled())                                                                                        \
            trace::write((line), s_traceUnit, __func__, __LINE__, (number));                                           \
    } while (false)

#endif
