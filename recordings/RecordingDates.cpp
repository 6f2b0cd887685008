// SPDX-License-Identifier: MIT
#include "recordings/RecordingDates.h"

namespace veldron {

namespace {

constexpr qint32 kLongestPutBack = 7200;

DateForms::Set formsOf(const RecordingDates::Rules &rules) {
    // A year in front leaves no doubt, whatever order was given.
    return rules.given ? DateForms::of(*rules.given) | DateForms::of(DateOrder::YearMonthDay)
                       : DateForms::all();
}

} // namespace

RecordingDates::RecordingDates(const Rules &rules)
    : m_forms(formsOf(rules)), m_order(rules.given.value_or(rules.assumed)) {}

RecordingDates::Outcome RecordingDates::takeBlock(QByteArrayView text) {
    const DateForms::Reading reading = DateForms::read(text, m_forms);
    if (reading.forms == 0) {
        return Outcome::NoDate;
    }
    m_forms = reading.forms;
    Outcome outcome = Outcome::Read;
    if (reading.isAmbiguous()) {
        outcome = m_assumed ? Outcome::Read : Outcome::ReadAsAssumed;
        m_assumed = true;
    }
    std::optional<QDate> date = reading.by(m_order);
    for (const auto &other : reading.byOrder) {
        if (!date && other) {
            date = other;
            outcome = m_assumed ? Outcome::Refuted : Outcome::Read;
            m_assumed = false;
        }
    }
    m_dateIsNew = m_dateIsNew || date != m_date;
    m_date = date;
    return outcome;
}

std::optional<QDate> RecordingDates::takeScan(qint32 second) {
    // A new date above the scan has told of the midnight already.
    if (m_date && !m_dateIsNew && m_second - second > kLongestPutBack) {
        m_date = m_date->addDays(1);
    }
    m_dateIsNew = false;
    m_second = second;
    return m_date;
}

} // namespace veldron
