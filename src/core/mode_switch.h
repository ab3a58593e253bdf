// The host's current mode, followed through the few notifications that come with a change of
// mode (a model retrieved, a window made current, a popup menu created), and a signal raised
// only when the mode really changes. One tracker serves the process; every CQvxModeSwitch
// handle shares it, and it dies with the last handle.
#pragma once

#include "toolkit/pro_types.h"

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

#include <functional>
#include <memory>

class CQvxModeSwitchImpl {
public:
    CQvxModeSwitchImpl() = default;
    CQvxModeSwitchImpl(const CQvxModeSwitchImpl&) = delete;
    CQvxModeSwitchImpl& operator=(const CQvxModeSwitchImpl&) = delete;
    /// Writes its own line to standard output.
    virtual ~CQvxModeSwitchImpl();

    /// Registers the four notification handlers, logging around the work; failures are
    /// reported and cost only their own trigger.
    void InitializeListeners();
    /// Evaluates the mode after a notification of `type`; closing popup menus are ignored.
    void OnProNotify(ProNotifyType type);
    /// Stores `mode` and raises the signal, unless it is the mode already held.
    void SetMode(ProMode mode);

    ProMode Mode() const { return m_mode; }
    boost::signals2::signal<void(ProMode)>& Signal() { return m_signal; }

private:
    /// PRO_MODE_UNUSED (-1) also stands for no mode seen yet.
    ProMode m_mode = PRO_MODE_UNUSED;
    boost::signals2::signal<void(ProMode)> m_signal;
};

class CQvxModeSwitch {
public:
    using Slot = std::function<void(ProMode)>;

    CQvxModeSwitch() = default;
    virtual ~CQvxModeSwitch() = default;

    /// Subscribes `slot` to changes of the mode and calls it at once with the current mode
    /// (PRO_MODE_UNUSED on a fresh tracker). The first Connect of the process makes the tracker
    /// and registers its listeners. The connection ends the subscription.
    boost::signals2::connection Connect(const Slot& slot);

private:
    std::shared_ptr<CQvxModeSwitchImpl> m_impl;
};
