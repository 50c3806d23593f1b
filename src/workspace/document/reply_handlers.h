#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "workspace/messaging/page_index.h"
#include "workspace/messaging/pending_request.h"

namespace workspace {

/// Who handles what a reply brings. The document fills in what it has; an empty handler does nothing.
struct ReplyHandlers {
  std::function<void(const Reply& reply)> CreateNewCorrespondence;
  /// The reply to a request for a letter was an error: the page may ask again.
  std::function<void()> EnableCreateLetter;
  std::function<void(const Reply& reply)> DecodeNetworkPath;
  std::function<void()> CopyTemplate;
  std::function<void(const Reply& reply, PageIndex page)> FillHistory;
  std::function<void(const Reply& reply)> FillBatchHistory;
  /// Merges a stored letter: mode "PREVIEW", "PRINT", "SAVE", or the name of a batch reprint request.
  std::function<void(const Reply& reply, PageIndex page, const std::string& mode,
                     const std::string& letter_type)>
      MergeLetter;
  /// Whether the fetched letter of a local reprint is to be printed; without a handler it is.
  std::function<bool()> LocalReprintGoesOn;
  /// The next letter of a local reprint could not be fetched, or is not to be printed any more.
  std::function<void()> StopLocalReprint;
  /// The request for the next letter was answered with an error: whether the run tells it at its end.
  std::function<bool(const Reply& reply, const std::string& error)> LocalReprintTakesError;
  /// Whether no letter of a local reprint is left to print; without a handler none is.
  std::function<bool()> LocalReprintIsOver;
  /// Tells of letters given to the coming batch run, where the reply does.
  std::function<void(const Reply& reply)> BatchItemsReplied;
  std::function<void()> BatchItemsFailed;
  /// Tells what came of a letter that came back.
  std::function<void(const Reply& reply)> ReturnMailReplied;
  std::function<void(const Reply& reply)> ViewBookMark;
  std::function<void(const Reply& reply)> FillCustFromLetter;
  std::function<void(const Reply& reply)> FillCustomerInfo;
  std::function<void()> SendBatchInq;
  std::function<void(const Reply& reply, const std::string& letter_type)> ProcessBatchReprint;
  /// Whether letters of that type are left to print and the run was not cancelled.
  std::function<bool(const std::string& letter_type)> HasLettersToReprint;
  /// Reports to the server how many letters a batch reprint printed; `status` is shown where it is not "".
  std::function<void(std::string_view status)> SendBatchCount;
};

}  // namespace workspace
