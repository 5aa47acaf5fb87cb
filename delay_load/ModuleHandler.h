#pragma once

/// Loads the suite's libraries and keeps them loaded as long as it lives. UI thread only.
class ModuleHandler
{
public:
    ModuleHandler() = default;
    ~ModuleHandler();
    ModuleHandler(const ModuleHandler&) = delete;
    ModuleHandler& operator=(const ModuleHandler&) = delete;

    /// Loads the settings store, metrics and flyer libraries in this order. False: one could not be loaded, which has
    /// been logged; those after it have not been tried. A later call loads what is missing.
    bool LoadDll();

private:
    bool m_strataLoaded = false;
    bool m_metricsLoaded = false;
    bool m_flyerLoaded = false;
};
