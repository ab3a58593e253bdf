#include "client/ovk/signals.h"

namespace ovk::detail {

CSlot::CSlot(boost::signals2::connection connection) : m_connection(std::move(connection)) {}

void CSlot::Disconnect() { m_connection.disconnect(); }

void CSignal::Disconnect(ISlot* slot) {
    if (slot) slot->Disconnect();
}

}  // namespace ovk::detail
