#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <limits>
#include <map>

/// Figures that a process of their own takes: the measuring process runs itself once more in a part.
namespace tessaro::bench {

/// What a figure counts as that the playing process did not say.
constexpr double kMissed = std::numeric_limits<double>::infinity();

/// Runs this program in a part; gives the figures that it says, lines of a name and a number. Empty, with a line on
/// standard error, when it fails.
[[nodiscard]] std::map<QByteArray, double> Play(const QString& self, const QStringList& arguments, const QString& home);
[[nodiscard]] double FigureOr(const std::map<QByteArray, double>& figures, const char* name, double otherwise);
/// This process's memory in megabytes: "VmRSS:" is what it has now, "VmHWM:" the most that it has had,
/// "RssAnon:" and "RssFile:" are the parts of the first that are its own and that are mapped files.
[[nodiscard]] double MemoryMegabytes(const char* what);

} // namespace tessaro::bench
