#pragma once

#include <array>

#include "platform/agreed/requests.h"
#include "server/wire/exchange.h"

namespace server {

/// The criteria by which batch runs are searched.
inline constexpr auto kBatchRunKeys =
    std::to_array<KnownKey>({{platform::request_key::kRunDays, "=", platform::key_operator::kBetween},
                             {platform::request_key::kRunStatus},
                             {platform::request_key::kThin}});
inline constexpr auto kBatchStatisticsKeys =
    std::to_array<KnownKey>({{platform::request_key::kBatch},
                             {platform::request_key::kBatchStatistics},
                             {platform::request_key::kThin}});

/// Answers with a record "CORRBATCH" of the runs of the days asked for (all without any), the latest first;
/// with no record where there is none. A run belongs to the day it was created on, and one that was created
/// in the evening to the next day as well: that is whose "Last Night" it was. STATUS is A (all), S
/// (successful), P (incomplete, running too) or F (failed). PAID_COUNT and UNPAID_COUNT count the run's
/// letters by what their forms owe now; letters about no form are in neither. Throws Failure kRefused for a
/// day or status that is none.
void AnswerBatchRuns(Exchange& exchange);

/// Answers BATCHSTAT "Y" with a record "CORRSTAT": of the run BATCH_NBR the letters by letter type, in the
/// order of the types; with no record where the run has no letter. Throws Failure kNotFound for a run that is
/// not there.
void AnswerBatchStatistics(Exchange& exchange);

/// Answers ReprintBatch: gives every letter of that run that may wait to the coming run, as CORR_BITEM would;
/// the record CORR_BITEM_OUTCOME says what came of each. Throws Failure kNotFound for a run that is not
/// there, kRefused for one that is still running, or has no letter.
void AnswerBatchAgain(Exchange& exchange);

}  // namespace server
