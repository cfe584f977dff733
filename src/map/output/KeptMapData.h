#pragma once

namespace tessaro {

/// Keeps the rows of `_MapData` while others are in it, and puts them back at its end.
class KeptMapData final {
  public:
    /// Throws office::Error when they can't be kept; `_MapData` is then as it was.
    KeptMapData();
    ~KeptMapData();
    KeptMapData(const KeptMapData&) = delete;
    KeptMapData& operator=(const KeptMapData&) = delete;
};

} // namespace tessaro
