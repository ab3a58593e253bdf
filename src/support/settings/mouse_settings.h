// The 3D mouse settings that belong to this application: pan-zoom, rotation, dominant axis and
// speed. They live in memory, in an XML file in the user's roaming profile, and in the
// driver's application configuration, and are copied between the three on request.
#pragma once

#include <boost/property_tree/ptree.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace oxapp {
class IAppcfg;
}

namespace s3dm {

class CSaveThreads;

class I3dmouseSensor {
public:
    virtual ~I3dmouseSensor() = default;
};

class I3dmouseSettings : public I3dmouseSensor {
public:
    virtual bool GetPanZoom() = 0;
    virtual bool GetRotation() = 0;
    virtual bool GetDominant() = 0;
    virtual float GetSpeed() = 0;
    virtual void SetPanZoom(bool on) = 0;
    virtual void SetRotation(bool on) = 0;
    virtual void SetDominant(bool on) = 0;
    virtual void SetSpeed(float speed) = 0;
    /// Starts writing the settings file and returns before it is written.
    virtual void Save() = 0;
    /// Reads the settings file; what it lacks or holds malformed keeps its present value.
    virtual void Load() = 0;
    /// Takes the four values from the driver; a value the driver does not give stays.
    virtual void Read(oxapp::IAppcfg* config) = 0;
    /// Gives the four values to the driver; nothing without a config interface.
    virtual void Write(oxapp::IAppcfg* config) = 0;
};

class C3dmouseSettings : public I3dmouseSettings {
public:
    /// The roaming folder with `subFolder` under it, made when missing; empty on failure.
    using FolderLookup = std::function<std::optional<std::wstring>(const std::wstring& subFolder)>;

    /// The file is "<roaming>\Quorvex\<appName>\<appName>.user.config".
    explicit C3dmouseSettings(const std::wstring& appName);
    /// The same with another place for the roaming folder (tests).
    C3dmouseSettings(const std::wstring& appName, FolderLookup folders);
    C3dmouseSettings(const C3dmouseSettings&) = delete;
    C3dmouseSettings& operator=(const C3dmouseSettings&) = delete;
    /// Waits for the saves still writing, each bounded by the file's retry limit, so that no
    /// save outlives the code it runs.
    ~C3dmouseSettings() override;

    bool GetPanZoom() override { return m_panZoom; }
    bool GetRotation() override { return m_rotation; }
    bool GetDominant() override { return m_dominant; }
    float GetSpeed() override { return m_speed; }
    void SetPanZoom(bool on) override { m_panZoom = on; }
    void SetRotation(bool on) override { m_rotation = on; }
    void SetDominant(bool on) override { m_dominant = on; }
    void SetSpeed(float speed) override { m_speed = speed; }
    void Save() override;
    void Load() override;
    void Read(oxapp::IAppcfg* config) override;
    void Write(oxapp::IAppcfg* config) override;

    /// The settings file's full path; empty when the folder cannot be had.
    std::optional<std::wstring> FilePath() const;
    /// The tree Save() merges into the file: the four settings under their element.
    boost::property_tree::ptree SettingsTree() const;
    /// Blocks until every save started so far has finished (tests, and the destructor).
    void WaitForSaves();

private:
    bool m_panZoom = true;
    bool m_rotation = true;
    bool m_dominant = false;
    float m_speed = 1.0f;
    std::wstring m_folder;
    std::wstring m_fileName;
    FolderLookup m_folders;
    std::unique_ptr<CSaveThreads> m_saves;
};

}  // namespace s3dm
