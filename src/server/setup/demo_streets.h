#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace server {

/// Where the demo's customers live: the zips and plus-fours of their streets, and the street file that has
/// them. The same every time. Decision [demo-street-file].
///
/// A county's seat has four zips with all streets of demo_names.tsv, the house number telling which of the
/// four. Around it lie eight towns with streets of demo_places.tsv. Addresses of demo_customers.tsv that
/// count as verified are in the file, too, under their own zips.
class DemoStreets {
 public:
  /// Throws Failure kNotFound or kDamaged naming a file that is missing or wrong.
  explicit DemoStreets(const std::filesystem::path& product_data);

  /// The zip of a house in a county's seat, five digits. `house` is from 11 to 10,000.
  const std::string& ZipInSeat(const std::string& county, int house) const;
  /// Four digits. `street` as in demo_names.tsv.
  static std::string PlusFour(std::string_view street, int house);
  static std::string PlusFourOfBox(int box);

  /// The two tables as text.
  std::string Cities() const;
  std::string Ranges() const;

 private:
  struct County {
    std::string number;
    std::string name;
    std::string seat;
    std::string zip_prefix;
    std::vector<std::string> seat_zips = {};  ///< the first four by house number
  };
  struct Town {
    std::string name;
    std::string zip;
    std::size_t county;
    int index;  ///< of all towns
  };
  /// An address of demo_customers.tsv.
  struct ShownHouse {
    std::string zip;
    int house;
    std::string street;
    std::string plus_four;
    bool is_written = false;
  };

  void ReadNames(const std::filesystem::path& file);
  void ReadShown(const std::filesystem::path& product_data);
  void TakeShown(const std::string& line, const std::string& city, const std::string& zip);
  void FillSeatZips();
  void MakeTowns();
  std::string FreeZip(const County& county, int from);

  void WriteSeat(const County& county, std::vector<ShownHouse>& shown, std::string& table) const;
  void WriteTown(const Town& town, std::string& table) const;

  std::vector<County> counties_;
  std::map<std::string, std::vector<std::string>> names_;  // by kind
  std::vector<Town> towns_;
  std::vector<ShownHouse> shown_;
  std::set<std::string> zips_;  // that are taken
};

/// Writes the street file into the folder, each table unless it is there: the demo's, or, for an office of
/// its own, the names of the columns alone.
void CreateDemoStreetFile(const std::filesystem::path& product_data, const std::filesystem::path& folder);
void CreateEmptyStreetFile(const std::filesystem::path& folder);

}  // namespace server
