#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/table_faults.h"
#include "platform/value.h"

namespace server {

struct InitOptions {
  std::filesystem::path data_folder;
  std::filesystem::path
      product_data_folder;  ///< what the product comes with: reference/, server/, templates/
  int customers = 300;      ///< invented; 0 for an office that brings its own
  int letters = 0;          ///< in their history
  platform::Date today;
  std::function<void(const std::string&)> tell = {};  ///< gets a sentence before what takes minutes
};

/// Reads the letter definitions of an installation and adds to `faults` what keeps them from being taken in,
/// queries that fail included. They are tried on the tables of the data folder where it has any. Changes
/// nothing. Throws Failure kNotFound where a table is missing, and what opening a database throws.
void CheckLetterDefinitions(const InitOptions& options, platform::TableFaults& faults);

/// Makes the server's data in a data folder: its database with letter definitions, counties, the office's
/// address, demo customers and a letter history, and its template folder.
///
/// May be called again and again: data that are there stay, template files that are missing are copied, and
/// letter definitions are read again when the product's have changed. Interrupted, it leaves nothing that a
/// program would take for data. Two programs may call it at once; one of them makes the data.
///
/// Throws Failure kDamaged or kNotFound naming what is wrong with the product's files, kRefused for a number
/// of customers or letters below 0, and for letters without customers, kUnavailable or kPermissionDenied for
/// a folder that cannot be written to.
void CreateServerData(const InitOptions& options);

}  // namespace server
