#pragma once

#include "server/wire/exchange.h"

namespace server {

/// Answers the key CUST_ID with that customer as it is stored, nulls included: record "CUSTOMER", without the
/// columns that EXCLCOLS names, separated by commas. A customer that is not there gives no record. Throws
/// Failure kRefused for a column that cannot be left out.
void AnswerCustomer(Exchange& exchange);

/// The same for a program that is to maintain the customer, with its keys ELEMENT_NAME, START and END. Throws
/// Failure kRefused for other elements than customers, and for other rows than the first.
void AnswerWholeCustomer(Exchange& exchange);

/// Answers the key CUST_IDS with the customers whose ids its value names, separated by commas, in that order:
/// record "CUSTOMER" without OT_BAL. Those that are not there are left out. Throws Failure kRefused for more
/// than 100 ids.
void AnswerListedCustomers(Exchange& exchange);

/// Answers the key CUST_FIND with the customers that the words of its value find (FindCustomers), of those
/// the rows START to END, from 1, at most 200 and the first 200 where nothing is said: record "CUSTOMER"
/// without OT_BAL. The record "CUSTOMER_SEARCH" says whether there are more behind them, and how many there
/// are. Throws Failure kRefused for rows that cannot be.
void AnswerCustomerSearch(Exchange& exchange);

}  // namespace server
