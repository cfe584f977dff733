#pragma once

#include <QString>

namespace tessaro {

inline constexpr int kLeastRadius = 5;
inline constexpr int kMostRadius = 1000;

/// A radius as a user typed it: either accepted, or the key of the message that tells why not, "228" for a text that is
/// no number and "229" for one out of range, which `radius` is the nearest limit to then.
struct TypedRadius {
    float radius = 0;
    const char* message = nullptr;
};
[[nodiscard]] TypedRadius CheckRadius(const QString& typed);

/// The name of the layer of a layer's buffers.
[[nodiscard]] QString BufferNameOf(const QString& layerName);
/// The folder of the buffers, which may be the user's own (see WritablePlace).
[[nodiscard]] QString BuffersFolder();

/// What became of a layer of buffers.
struct BufferFile {
    QString path;   ///< of the .shp; empty when there is none to be shown
    QString reason; ///< why, in the current language where it has words for that; the log tells it too
};
/// Writes circles around the points of a shapefile as polygons of 37 points into the folder of buffers, and copies the
/// points' table beside them. A radius is in kilometers of 0.005 degrees each, whatever the latitude. A file of
/// another kind than simple points gives a layer without shapes. Former buffers of the same name are replaced. A record
/// that can't be read, also a null shape, ends the work and leaves the circles made so far; when a file can't be
/// written, the former ones stand.
[[nodiscard]] BufferFile MakeBuffers(const QString& pointFile, const QString& layerName, float radius);

} // namespace tessaro
