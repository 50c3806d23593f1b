#pragma once

#include <string_view>

namespace server {

/// What a record "CUSTOMER" is made from: the table, and under the record's names the kind of customer, the
/// addresses' marks and the names of their counties. A condition may follow, on columns of `customer`.
/// Decision [customer-type].
inline constexpr std::string_view kSelectCustomers =
    R"(SELECT customer.*,
         CASE WHEN TRIM(COALESCE(customer.LAST_NM, '')) <> '' THEN '0' ELSE '1' END AS CUST_TYP_CD,
         customer.MAIL_BAD_FLG AS MAIL_RTND_IND, customer.RES_BAD_FLG AS RES_RTND_IND,
         mail_county.QZ_CNTY_DESC AS MAIL_COUNTY, res_county.QZ_CNTY_DESC AS RES_COUNTY
       FROM customer
         LEFT JOIN county AS mail_county ON mail_county.QZ_CNTY_NBR = customer.MAIL_CNTY_CD
         LEFT JOIN county AS res_county ON res_county.QZ_CNTY_NBR = customer.RES_CNTY_CD )";

}  // namespace server
