#pragma once

#include "audio/AudioRecordingClass.h"
#include "audio/SoundDeviceClass.h"
#include "console/ReceiverControls.h"
#include "link/Handshake.h"
#include "link/LinkHealth.h"
#include "link/StatusLine.h"
#include "link/WebsocketsClass.h"
#include "platform/Desktop.h"
#include "platform/MemoryBlock.h"
#include "remote/AudioStream.h"
#include "remote/RemoteCommand.h"
#include "remote/RigMode.h"
#include "remote/RigReply.h"
#include "remote/RigServer.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

class App;

// The receiver console: the one main window, and everything that a session with a receiver needs.
// Owned by App from its first event to the end of the program. The controls are the tuning state:
// to retune is to set a control, whose event then sends the command. The methods are defined in the
// folder of the subsystem that they belong to.
class Window1 : public Window, public ReceiverControls {
  public:
    Window1(Desktop& theDesktop, App& application);
    ~Window1() override;

    // Opening and closing (console)
    void Event_Open();
    void init(int mode); // mode: as stored before this window was created
    bool Event_CancelClose(bool appQuitting) override;

    // Scheduled recordings (schedule). The texts are a schedule row's cells.
    void ConnectAndRecord(const std::string& url, const std::string& freq, const std::string& mode,
                          const std::string& filter);
    void EndEntry(); // afterwards nothing reconnects and nothing records

    // The recording (audio)
    std::unique_ptr<AudioRecordingClass> audioRecording; // the latest one; null before the first
    std::int64_t rollOverSamples =
        AudioRecordingClass::RollOverSamples; // where the next file begins

    bool IsRecording() const { return audioRecording != nullptr && audioRecording->isRecording; }

    // Adds a row to the log: to Listbox1 and to the log's file (console)
    void Log(const std::string& row);

    // Fetches the list of receivers; fills the popup when the list arrives (directory)
    void GetKiwiList();

  private:
    // Controls (console)
    void BindEvents();
    void BindConnectionEvents();
    void BindTuningEvents();
    void BindGainEvents();
    void BindSoundEvents();
    void BindWaterfallEvents();
    void BindNetworkEvents();
    void FillFromPreferences();

    void TextFieldFreq_TextChange();
    void StepFrequency(double steps);                        // of 1 kHz, by the wheel or a key
    void PassbandTextChange();                               // either edge
    static void StepPassband(TextField& edge, double steps); // of 10 Hz
    void TextFieldIdentity_TextChange();
    void TextFieldGeoLocation_TextChange();
    void AgcChanged(); // both check boxes and all four sliders
    void SliderSquelch_ValueChanged();
    void PopupMenuSquelchTime_Change();
    void PopupMenuDeEmphasis_Change();
    void PopupMenuMode_Open();
    void PopupMenuMode_Change();
    void ChangeSettingsForMode(int mode);
    void SaveSettingsForMode();
    void WriteAgcLabels();
    void Timer3_Action();

    // Connection (link)
    void PushButtonConnect_Action();
    void PushButtonDisconnect_Action();
    void PushDisconnectButton();
    void CheckBoxReconnect_Action();
    void DoConnect();
    void DoDisconnect();
    void EndSession();
    void HangUp();
    bool TidyAddressAndPort();
    void ConnectSoon();
    void ConnectLater(int milliseconds);
    void ReconnectLater();
    void WithdrawConnect();
    void MakeLink(LinkKind kind);
    TCPSocket& SocketOf(LinkKind kind);
    std::unique_ptr<WebsocketsClass>& WebsocketOf(LinkKind kind);
    void SendRequest(LinkKind kind, WebsocketsClass* websocket);
    void SendString(const std::string& text, TCPSocket* socket);
    void TCPSocket_Connected(LinkKind kind);
    void TCPSocket_DataAvailable(LinkKind kind);
    void TCPSocketAudio_Error();
    void TCPSocketWaterfall_Error();
    void TakeConnectReply(LinkKind kind);
    void LinkIsUp(LinkKind kind);
    void ReadFrames(LinkKind kind);
    void DispatchFrame(LinkKind kind, const std::string& tag, const std::string& body);
    void Timer1_Action();

    // The status line (link)
    void ShowStatus(const std::string& words);
    void ShowRemark();
    void ShowStatusLine();
    void CountDown();

    // Commands to the receiver (link). Without a session they do nothing.
    void SendCommand(std::string_view text);
    void SendSetAuthorization(WebsocketsClass* websocket);
    void SendSetAudioOK();
    void SendSetModulation();
    void SendSetAGC();
    void SendSetIdentity(const std::string& name);
    void SendSetGeoLocation(const std::string& place);
    void SendSetBrowser();
    void SetSquelch(int level, double seconds);
    void SetDeEmphasis(int index);
    void SetMute(bool mute); // the receiver does it

    // Messages from the receiver (link)
    void ParseMessage(const std::string& body);
    void AudioInitReceived();
    void AudioRateReceived(std::string_view value);

    // Frames and sound (audio)
    void ParseSoundData(const std::string& data);
    void NoteSequence(std::uint32_t sequence);
    void InitSoundStuff();
    void ReadSoundDevices();
    void FillSoundOutputPopupMenu();
    void SetSoundOutputDevice();
    void PrimeSoundOutputBuffer();
    void PlaySound(std::int64_t count, const void* samples);
    void SetOutputVolume(double volume); // 0 to 1
    void OutputVolumeSlider_ValueChanged();
    void OutputVolumeSlider_MouseWheel(int deltaY);

    // Recording (audio)
    enum class RecordingWish {
        OfEntry, // a schedule entry waits to be recorded
        ToGoOn   // a lost link has ended a recording: it continues in a new file
    };
    void PushButtonRecord_Action();
    void BeginRecording(); // even if the button is disabled
    void EndRecording();   // does nothing if no recording runs
    void ArmRecording(RecordingWish wish);
    void DisarmRecording(RecordingWish wish);
    void BeginArmedRecording();
    void AudioRecordingStart();
    void AudioRecordingStop();
    void AudioRecordingWriteHeader();
    void AudioRecordingWriteSquelchDeadTime();
    void EndFailedRecording();
    void RecordSamples(const MemoryBlock& block, std::size_t sampleCount);
    void TextFieldSquelchedDeadSpace_TextChange();
    void ShowRecordingTime();

    // Scheduled recordings (schedule)
    void SetMode(const std::string& mode);
    void SetPassbandTexts(const std::string& filter);

    // Remote control and audio stream (remote)
    void InitNetworking();
    void CheckBoxNetwork_Action(const CheckBox& checkBox);
    void RxUDPSocket_DataAvailable(UDPSocket& socket);
    void Obey(const RemoteCommand& command);
    void SendFrequency(double hertz); // to the peer, not to the receiver
    void SendToPeer(std::string text);
    void ReplyStreamRate();
    void StartStreaming();
    void EndStreaming();
    void ShowStreaming();
    void StreamSoundBlock(std::size_t sampleCount, const MemoryBlock& samples);
    void WakeTimer4();
    void Timer4_Action();
    void WriteDatagram(const Datagram& d);

    // Rig control (remote)
    void OpenRigControl();
    std::string AnswerRig(const RigCommand& command); // the bytes to send back
    RigReply ObeyRig(const RigCommand& command);
    RigReply SetRigFrequency(double hertz);
    RigReply TellRigMode();
    RigReply SetRigMode(const RigCommand& command);
    RigReply TellRigLevel(const std::string& name);
    RigReply SetRigLevel(const RigCommand& command);
    RigReply RecordByRig(bool wanted);
    RigReply TellRig();
    RigPassband PassbandShown() const;

    // Waterfall
    void SetWaterfall(int speed, int compression, int zoom, double freq, WebsocketsClass* ws);
    void RecenterWaterfall(); // on the tuned frequency
    void ParseWaterfallData(const std::string& data);
    void SliderWaterfallGain_ValueChanged();
    void SliderWaterfallMinDb_ValueChanged();
    void CheckBoxUpdateWaterfall_Action();
    bool WaterfallCanvas_MouseDown(int x);
    void WriteWaterfallLabels();

    // Receiver directory
    void KiwiListReceived();
    void AddFavoriteKiwis();
    void AddMyKiwis();
    void PopupMenuKiwiList_MouseDown();
    void PopupMenuKiwiList_Change();
    void TextFieldAddress_TextChange();
    void TextFieldPort_TextChange();

    App& app;

    // Session state
    std::unique_ptr<TCPSocket> TCPSocketAudio;
    std::unique_ptr<TCPSocket> TCPSocketWaterfall;
    std::unique_ptr<WebsocketsClass> audioWebsocket; // null before the first connect
    std::unique_ptr<WebsocketsClass> waterfallWebsocket;
    std::unique_ptr<Timer> Timer1;            // statistics
    static constexpr int DisplayPeriod = 100; // ms, of Timer3
    std::unique_ptr<Timer> Timer3;            // display
    std::string theHost;
    std::int64_t thePort = 0;
    bool didManuallyDisconnect = false; // the user's own Disconnect is in progress
    bool isConnected = false;           // the receiver has sent its audio rate
    std::uint64_t pendingConnect = 0;   // ticket of the planned DoConnect; 0: none is planned
    std::uint64_t lastTicket = 0;
    int reconnectTicks = 0;   // of Timer3, until the planned reconnect; 0: none is planned
    bool isHangingUp = false; // the program itself is closing the links
    LinkHealth linkHealth;    // of this session
    StatusLine statusLine;
    std::string frameTag;  // kept between frames to reuse the memory
    std::string frameBody; // kept for the same reason

    // Tuning as last sent to the receiver
    std::int64_t lowCut = 0; // Hz relative to the tuned frequency
    std::int64_t hiCut = 0;  // Hz relative to the tuned frequency
    double tunedFreq = 0;    // kHz
    bool okToSave = false;   // while false, SaveSettingsForMode does nothing

    // Audio state
    double audioRate = 0;                       // samples per second; 0 until known
    static constexpr double LowestMeter = -127; // dBm
    double sMeter = LowestMeter;
    int kiwiFlags = 0;
    std::int64_t kiwiAudioSequence = 0;
    std::int64_t lastKiwiAudioSequence = -1; // -1: none seen on this connection
    std::int64_t numSoundBytes = 0;          // since the last tick of Timer1
    std::vector<SoundDeviceClass> soundDevices;
    std::vector<std::size_t> soundInputDeviceIDs;  // indexes into soundDevices
    std::vector<std::size_t> soundOutputDeviceIDs; // row i of the popup shows device [i]
    MemoryBlock kiwiSoundSamplesMB;                // silence, for priming
    bool startRecordingWhenConnected = false;      // RecordingWish::OfEntry is armed
    bool resumesRecording = false;                 // RecordingWish::ToGoOn is armed
    std::string_view whyNotRecorded;               // why the entry has no recording yet
    bool isSquelched = false;                      // the recording is inside a silent period

    // Remote control state
    std::unique_ptr<UDPSocket> RxUDPSocket; // bound from the first use of networking on
    std::unique_ptr<Timer> Timer4;          // sends the stream
    RigServer rigServer;
    AudioStream audioStream;
    Datagram streamDatagram; // kept between blocks to reuse the memory

    // Waterfall state
    std::optional<double> waterfallStartFreq; // kHz, the left edge; empty before the first session
    int waterfallOffsetDb = 0;                // 0 to 63
    double waterfallGain = 0;                 // 0.00 to 5.00

    // Receiver directory state
    bool gotKiwiPopupMouseDown = false; // the popup's next change is the user's choice
};

} // namespace larkspool
