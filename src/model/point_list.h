#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "model/device_point.h"

namespace model {

/// One point of the device: the network variable that it views, and how.
struct PointRow {
  std::string_view key;
  std::string_view name;
  std::string_view description;
  std::string_view variable;
  std::string_view format;
  std::string_view separator;
  bool localization_specific;
  std::string_view relative;
};

/// The rows of the points, in the order in which they are read and written.
std::span<const PointRow> PointRows();

/// A point that has not been read.
std::unique_ptr<CNvCpTable> MakePoint(const PointRow& row, const lns::NetworkVariable& variable,
                                      const std::shared_ptr<lns::Dialect>& dialect);

/// The device's eleven points by key, in the order in which they are read and written.
class PointList {
 public:
  PointList() = default;

  /// Looks up the network variable of every point by name; reads no values. Throws the platform's error for a
  /// missing variable.
  PointList(const lns::Collection<lns::NetworkVariable>& variables,
            const std::shared_ptr<lns::Dialect>& dialect);

  std::size_t size() const { return points_.size(); }
  bool empty() const { return points_.empty(); }
  CNvCpTable& operator[](std::size_t position) const { return *points_[position].point; }
  std::string_view KeyAt(std::size_t position) const { return points_[position].key; }

  /// Every point was read in these units; false for an empty list.
  bool IsReadIn(int display_units) const;

  /// The readings of all points, to restore if a later read fails.
  std::vector<CNvCpTable::Reading> Held() const;
  void PutBack(std::vector<CNvCpTable::Reading> held) const;

  /// Throws 5 for an unknown key.
  CNvCpTable& Item(std::string_view key) const;

 private:
  struct Entry {
    std::string_view key;
    std::unique_ptr<CNvCpTable> point;
  };
  std::vector<Entry> points_;
};

}  // namespace model
