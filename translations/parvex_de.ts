<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>PxBoolProperty</name>
    <message>
        <source>true</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>false</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxCalibrationEditor</name>
    <message>
        <source>Calibration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calibration of %1, serial number %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This sensor has no calibration values.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write to Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parvex</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Calibration Files (*.ptc)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The calibration was written to the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This calibration was saved from %1, serial number %2, on %3.

Do you want to write it to the connected %4, serial number %5?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The calibration of %1 was written to the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment (optional):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The calibration was saved to %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxCodeUpdateDialog</name>
    <message>
        <source>Firmware Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do not switch the device off until the update has finished.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No firmware update is available for this device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update was cancelled. The device keeps its previous firmware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the device was lost during the update. The device keeps its previous firmware; connect to it again and repeat the update.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware update failed: %1

The device keeps its previous firmware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware was updated. The device has restarted on it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxCodeUpdateJob</name>
    <message>
        <source>The update was cancelled.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxConnection</name>
    <message>
        <source>Communication error</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxConnectionDialog</name>
    <message>
        <source>Select a connection type:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxDataLogger</name>
    <message>
        <source>Failed to create logging directory.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxDebugForm</name>
    <message>
        <source>Debug</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Memory:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length (bytes):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This sensor has no memories to read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The address must be a hexadecimal number.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Read %n byte(s) of %1 at 0x%2.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Read failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The bytes to write must be pairs of hexadecimal digits.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Wrote %n byte(s) to %1 at 0x%2.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Write failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxDevice</name>
    <message>
        <source>Cannot write %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file %1 is incomplete: it was not written to the end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file %1 is not a calibration file of this %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file %1 is not a configuration file of this %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file %1 holds a value of property %2 that does not suit it (%3 values of %4 bytes).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxDeviceUi</name>
    <message>
        <source>Load Configuration...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Configuration...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Action</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parvex</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Configuration Files (*.pto)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do you really want to reset?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file was saved with the following information:

Name: %1
Serial number: %2
Date: %3
Comment: %4

Are you sure you want to load this file to the currently connected %5?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment (optional):</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxDocumentManager</name>
    <message>
        <source>Please select the document you want to display:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxEchoForm</name>
    <message>
        <source>Min Amplitude:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max Amplitude:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Min Distance:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max Distance:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Freeze</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Seg</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flags</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw Detections</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxEchoesGraph</name>
    <message>
        <source>ATTENTION</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Configuration modified. Use Apply button to confirm.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Segment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxProtocolReader</name>
    <message>
        <source>Protocol error</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxRecordPlayerForm</name>
    <message>
        <source>0.25x</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0.5x</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Real time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2x</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>4x</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>8x</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>as fast as possible</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a record file; the arrow lists the files replayed recently.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No record file open.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial number:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frames:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Duration:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position in the record; the frames follow while the slider is dragged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>First frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One frame back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Play</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>One frame forward</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frame:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorded time of the frame shown, and its time from the first frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frame time:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speed:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start again at the first frame after the last</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Tag</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The frame shown starts the range to extract</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End Tag</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The frame shown ends the range to extract</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the tagged frames to a new record file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Views:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Traces...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the replayed traces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Echoes...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the replayed echoes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No recent files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay a Record File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record Files (*.ptl);;All Files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be replayed: it is not a record file of a device that this application knows.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be replayed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (the recording was cut short; every complete frame replays)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay - %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frame %1 of &quot;%2&quot; cannot be replayed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (+%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract frames %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extract Frames</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record Files (*.ptl)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The frames cannot be extracted into the file they come from.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Extracting frames %1 to %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The frames could not be written to &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxRecorder</name>
    <message>
        <source>Failed to create recording directory.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording stopped: the record file could not be written. The frames recorded until then are kept.
%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxResultState</name>
    <message>
        <source>Measurement Rate: </source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxSensor</name>
    <message>
        <source>Length:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh Rate:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxSensorUi</name>
    <message>
        <source>Start Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Data Logging</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw Traces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filtered Traces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw Detections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Debug</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calibration...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Data Logging</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot start recording while there are unapplied changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot start logging while there are unapplied changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How Long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Maximum file size (MB):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Maximum record time (minutes):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data Logger</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recording Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Logging Directory</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxSerialPortForm</name>
    <message>
        <source>Serial Port Viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List the serial ports again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Even</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Odd</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> Hz</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Baud rate:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parity:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data bits:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop bits:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Slave address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time-out:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retries:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Poll rate:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the serial port first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No installed driver offers a device for the serial port.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial port %1 is no longer available: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 at %2 Hz: %3 polls, %4 missed, %5 failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last failure: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxSerialPortListener</name>
    <message>
        <source>Type %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Register</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Register %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxSpinBox</name>
    <message>
        <source>Disabled</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxStaticUi</name>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User Guide...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnect...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial Port Viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>disconnect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some properties are modified.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do you really want to %1?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>close the application</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Replay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This device is currently working in limited mode. Some features are not available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device you are connecting to has a non-standard firmware version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please contact technical support if you encounter problems.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The device you are connecting to has a more recent firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>version than the configuration software on your computer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do you still want to connect?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The software in your %1 device is not up to date.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Do you want to update to the latest version?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxSystemStateForm</name>
    <message>
        <source>System State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Timers &amp;&amp; Load</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Elapsed Time:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Acquisition State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Debug</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Factory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Upgrade</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial Number: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version: FPGA: %1.%2  Software: %3 (%4)  CRC: %5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part Numbers: Hardware: %1  Software: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxTraceForm</name>
    <message>
        <source>Segments:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Actions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set Offsets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Traces at their normal position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Separate Traces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show segment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show All Segments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide All Segments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show Segment Panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Increase Trace Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decrease Trace Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Increase Trace Spacing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decrease Trace Spacing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Markers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>+</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Square</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Circle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reverse Video</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View Grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Trace Display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxTraceWidget</name>
    <message>
        <source>Segment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Base</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxUnits</name>
    <message>
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Meter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Foot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Celsius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fahrenheit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kelvin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Units</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PxUpdateSelectDialog</name>
    <message>
        <source>Firmware Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No firmware is available for this device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select the firmware to install on the device:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
