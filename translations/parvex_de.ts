<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>PxBoolProperty</name>
    <message>
        <location filename="../parvex/model/PxBoolProperty.cpp" line="+15"/>
        <source>true</source>
        <translation>wahr</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>false</source>
        <translation>falsch</translation>
    </message>
</context>
<context>
    <name>PxCalibrationEditor</name>
    <message>
        <location filename="../parvex/maintenance/PxCalibrationEditor.cpp" line="+31"/>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Calibration of %1, serial number %2</source>
        <translation>Kalibrierung von %1, Seriennummer %2</translation>
    </message>
    <message>
        <location line="+43"/>
        <source>This sensor has no calibration values.</source>
        <translation>Dieser Sensor hat keine Kalibrierungswerte.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Load...</source>
        <translation>Laden...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Write to Device</source>
        <translation>In das Gerät schreiben</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Parvex</source>
        <translation>Parvex</translation>
    </message>
    <message>
        <location line="+0"/>
        <source> Calibration Files (*.ptc)</source>
        <translation> Kalibrierungsdateien (*.ptc)</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>The calibration was written to the device.</source>
        <translation>Die Kalibrierung wurde in das Gerät geschrieben.</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>This calibration was saved from %1, serial number %2, on %3.

Do you want to write it to the connected %4, serial number %5?</source>
        <translation>Diese Kalibrierung wurde von %1, Seriennummer %2, am %3 gespeichert.

Möchten Sie sie in das verbundene Gerät %4, Seriennummer %5, schreiben?</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>The calibration of %1 was written to the device.</source>
        <translation>Die Kalibrierung aus %1 wurde in das Gerät geschrieben.</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Enter comment</source>
        <translation>Kommentar eingeben</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Comment (optional):</source>
        <translation>Kommentar (optional):</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>The calibration was saved to %1.</source>
        <translation>Die Kalibrierung wurde in %1 gespeichert.</translation>
    </message>
</context>
<context>
    <name>PxCodeUpdateDialog</name>
    <message>
        <location filename="../parvex/maintenance/PxCodeUpdateDialog.cpp" line="+23"/>
        <source>Firmware Update</source>
        <translation>Firmware-Update</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Do not switch the device off until the update has finished.</source>
        <translation>Schalten Sie das Gerät nicht aus, bevor das Update abgeschlossen ist.</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <location line="+37"/>
        <source>Cancelling...</source>
        <translation>Wird abgebrochen...</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>No firmware update is available for this device.</source>
        <translation>Für dieses Gerät ist kein Firmware-Update verfügbar.</translation>
    </message>
    <message>
        <location line="+16"/>
        <source>The update was cancelled. The device keeps its previous firmware.</source>
        <translation>Das Update wurde abgebrochen. Das Gerät behält seine bisherige Firmware.</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>The connection to the device was lost during the update. The device keeps its previous firmware; connect to it again and repeat the update.</source>
        <translation>Die Verbindung zum Gerät ging während des Updates verloren. Das Gerät behält seine bisherige Firmware; verbinden Sie sich erneut mit ihm und wiederholen Sie das Update.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The firmware update failed: %1

The device keeps its previous firmware.</source>
        <translation>Das Firmware-Update ist fehlgeschlagen: %1

Das Gerät behält seine bisherige Firmware.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>The firmware was updated. The device has restarted on it.</source>
        <translation>Die Firmware wurde aktualisiert. Das Gerät wurde mit ihr neu gestartet.</translation>
    </message>
</context>
<context>
    <name>PxCodeUpdateJob</name>
    <message>
        <location filename="../parvex/maintenance/PxCodeUpdateJob.cpp" line="+23"/>
        <source>The update was cancelled.</source>
        <translation>Das Update wurde abgebrochen.</translation>
    </message>
</context>
<context>
    <name>PxConnection</name>
    <message>
        <location filename="../parvex/comm/PxConnection.cpp" line="+67"/>
        <source>Communication error</source>
        <translation>Kommunikationsfehler</translation>
    </message>
</context>
<context>
    <name>PxConnectionDialog</name>
    <message>
        <location filename="../parvex/frame/PxConnectionDialog.cpp" line="+23"/>
        <source>Select a connection type:</source>
        <translation>Wählen Sie eine Verbindungsart:</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
</context>
<context>
    <name>PxDataLogger</name>
    <message>
        <location filename="../parvex/recording/PxDataLogger.cpp" line="+53"/>
        <source>Failed to create logging directory.</source>
        <translation>Das Protokollverzeichnis konnte nicht angelegt werden.</translation>
    </message>
</context>
<context>
    <name>PxDebugForm</name>
    <message>
        <location filename="../parvex/maintenance/PxDebugForm.cpp" line="+23"/>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Memory:</source>
        <translation>Speicher:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Length (bytes):</source>
        <translation>Länge (Bytes):</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Read</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Write</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <location line="+31"/>
        <source>This sensor has no memories to read.</source>
        <translation>Dieser Sensor hat keine lesbaren Speicher.</translation>
    </message>
    <message>
        <location line="+83"/>
        <source>The address must be a hexadecimal number.</source>
        <translation>Die Adresse muss eine Hexadezimalzahl sein.</translation>
    </message>
    <message numerus="yes">
        <location line="+10"/>
        <source>Read %n byte(s) of %1 at 0x%2.</source>
        <translation>
            <numerusform>%n Byte aus %1 bei 0x%2 gelesen.</numerusform>
            <numerusform>%n Bytes aus %1 bei 0x%2 gelesen.</numerusform>
        </translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Read failed: %1</source>
        <translation>Lesen fehlgeschlagen: %1</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>The bytes to write must be pairs of hexadecimal digits.</source>
        <translation>Die zu schreibenden Bytes müssen Paare aus Hexadezimalziffern sein.</translation>
    </message>
    <message numerus="yes">
        <location line="+5"/>
        <source>Wrote %n byte(s) to %1 at 0x%2.</source>
        <translation>
            <numerusform>%n Byte in %1 bei 0x%2 geschrieben.</numerusform>
            <numerusform>%n Bytes in %1 bei 0x%2 geschrieben.</numerusform>
        </translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Write failed: %1</source>
        <translation>Schreiben fehlgeschlagen: %1</translation>
    </message>
</context>
<context>
    <name>PxDevice</name>
    <message>
        <location filename="../parvex/model/PxDevice.cpp" line="+179"/>
        <source>system error %1</source>
        <translation>Systemfehler %1</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Cannot write %1: %2</source>
        <translation>Schreiben von %1 nicht möglich: %2</translation>
    </message>
    <message>
        <location line="+293"/>
        <source>The file %1 is incomplete: it was not written to the end.</source>
        <translation>Die Datei %1 ist unvollständig: Sie wurde nicht bis zum Ende geschrieben.</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>The file %1 is not a calibration file of this %2.</source>
        <translation>Die Datei %1 ist keine Kalibrierungsdatei dieses Geräts (%2).</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The file %1 is not a configuration file of this %2.</source>
        <translation>Die Datei %1 ist keine Konfigurationsdatei dieses Geräts (%2).</translation>
    </message>
    <message>
        <location line="+21"/>
        <source>The file %1 holds a value of property %2 that does not suit it (%3 values of %4 bytes).</source>
        <translation>Die Datei %1 enthält einen Wert der Eigenschaft %2, der nicht zu ihr passt (%3 Werte zu %4 Bytes).</translation>
    </message>
</context>
<context>
    <name>PxDeviceUi</name>
    <message>
        <location filename="../parvex/deviceui/PxDeviceUi.cpp" line="+23"/>
        <source>Load Configuration...</source>
        <translation>Konfiguration laden...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Save Configuration...</source>
        <translation>Konfiguration speichern...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Reset...</source>
        <translation>Zurücksetzen...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Update...</source>
        <translation>Firmware-Update...</translation>
    </message>
    <message>
        <location line="+136"/>
        <source>Parvex</source>
        <translation>Parvex</translation>
    </message>
    <message>
        <location line="+0"/>
        <source> Configuration Files (*.pto)</source>
        <translation> Konfigurationsdateien (*.pto)</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>Do you really want to reset?</source>
        <translation>Möchten Sie wirklich zurücksetzen?</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>This file was saved with the following information:

Name: %1
Serial number: %2
Date: %3
Comment: %4

Are you sure you want to load this file to the currently connected %5?</source>
        <translation>Diese Datei wurde mit folgenden Angaben gespeichert:

Name: %1
Seriennummer: %2
Datum: %3
Kommentar: %4

Möchten Sie diese Datei wirklich in das verbundene Gerät %5 laden?</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Enter comment</source>
        <translation>Kommentar eingeben</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Comment (optional):</source>
        <translation>Kommentar (optional):</translation>
    </message>
</context>
<context>
    <name>PxDocumentManager</name>
    <message>
        <location filename="../parvex/frame/PxDocumentManager.cpp" line="+87"/>
        <source>Please select the document you want to display:</source>
        <translation>Bitte wählen Sie das Dokument, das angezeigt werden soll:</translation>
    </message>
</context>
<context>
    <name>PxEchoForm</name>
    <message>
        <location filename="../parvex/displays/PxEchoForm.cpp" line="+39"/>
        <source>Min Amplitude:</source>
        <translation>Min. Amplitude:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Max Amplitude:</source>
        <translation>Max. Amplitude:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Min Distance:</source>
        <translation>Min. Entfernung:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Max Distance:</source>
        <translation>Max. Entfernung:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Freeze</source>
        <translation>Einfrieren</translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Seg</source>
        <translation>Seg</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Flags</source>
        <translation>Flags</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>Raw Detections</source>
        <translation>Roh-Echos</translation>
    </message>
</context>
<context>
    <name>PxEchoesGraph</name>
    <message>
        <location filename="../parvex/displays/PxEchoesGraph.cpp" line="+54"/>
        <source>ATTENTION</source>
        <translation>ACHTUNG</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Configuration modified. Use Apply button to confirm.</source>
        <translation>Konfiguration geändert. Mit „Übernehmen“ bestätigen.</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Segment</source>
        <translation>Segment</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
</context>
<context>
    <name>PxProtocolReader</name>
    <message>
        <location filename="../parvex/comm/PxProtocolReader.cpp" line="+29"/>
        <location filename="../parvex/results/PxResultTrace.cpp" line="+44"/>
        <source>Protocol error</source>
        <translation>Protokollfehler</translation>
    </message>
</context>
<context>
    <name>PxRecordPlayerForm</name>
    <message>
        <location filename="../parvex/recording/PxRecordPlayerForm.cpp" line="+56"/>
        <source>0.25x</source>
        <translation>0,25x</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>0.5x</source>
        <translation>0,5x</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Real time</source>
        <translation>Echtzeit</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>2x</source>
        <translation>2x</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>4x</source>
        <translation>4x</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>8x</source>
        <translation>8x</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>as fast as possible</source>
        <translation>so schnell wie möglich</translation>
    </message>
    <message>
        <location line="+25"/>
        <location line="+293"/>
        <location line="+2"/>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <location line="-256"/>
        <source>Open...</source>
        <translation>Öffnen...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Choose a record file; the arrow lists the files replayed recently.</source>
        <translation>Wählen Sie eine Aufzeichnungsdatei; der Pfeil listet die zuletzt wiedergegebenen Dateien auf.</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+242"/>
        <source>No record file open.</source>
        <translation>Keine Aufzeichnungsdatei geöffnet.</translation>
    </message>
    <message>
        <location line="-225"/>
        <source>Device:</source>
        <translation>Gerät:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Serial number:</source>
        <translation>Seriennummer:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Date:</source>
        <translation>Datum:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Frames:</source>
        <translation>Frames:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Duration:</source>
        <translation>Dauer:</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Position in the record; the frames follow while the slider is dragged.</source>
        <translation>Position in der Aufzeichnung; die Frames folgen, während der Schieberegler gezogen wird.</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>First frame</source>
        <translation>Erster Frame</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>One frame back</source>
        <translation>Ein Frame zurück</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+291"/>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <location line="-290"/>
        <source>One frame forward</source>
        <translation>Ein Frame vor</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Last frame</source>
        <translation>Letzter Frame</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Frame:</source>
        <translation>Frame:</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Recorded time of the frame shown, and its time from the first frame</source>
        <translation>Aufgezeichnete Zeit des angezeigten Frames und seine Zeit ab dem ersten Frame</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Frame time:</source>
        <translation>Frame-Zeit:</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Speed:</source>
        <translation>Geschwindigkeit:</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Loop</source>
        <translation>Schleife</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Start again at the first frame after the last</source>
        <translation>Nach dem letzten Frame wieder mit dem ersten beginnen</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Start Tag</source>
        <translation>Startmarke</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The frame shown starts the range to extract</source>
        <translation>Der angezeigte Frame beginnt den zu speichernden Ausschnitt</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>End Tag</source>
        <translation>Endmarke</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>The frame shown ends the range to extract</source>
        <translation>Der angezeigte Frame beendet den zu speichernden Ausschnitt</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Extract...</source>
        <translation>Ausschnitt speichern...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Write the tagged frames to a new record file</source>
        <translation>Die markierten Frames in eine neue Aufzeichnungsdatei schreiben</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Views:</source>
        <translation>Ansichten:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Traces...</source>
        <translation>Signalverläufe...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Show the replayed traces</source>
        <translation>Die wiedergegebenen Signalverläufe anzeigen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Echoes...</source>
        <translation>Echos...</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Show the replayed echoes</source>
        <translation>Die wiedergegebenen Echos anzeigen</translation>
    </message>
    <message>
        <location line="+42"/>
        <source>No recent files</source>
        <translation>Keine zuletzt verwendeten Dateien</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Replay a Record File</source>
        <translation>Aufzeichnungsdatei wiedergeben</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Record Files (*.ptl);;All Files (*)</source>
        <translation>Aufzeichnungsdateien (*.ptl);;Alle Dateien (*)</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>&quot;%1&quot; cannot be replayed: it is not a record file of a device that this application knows.</source>
        <translation>Wiedergabe von „%1“ nicht möglich: Die Datei ist keine Aufzeichnungsdatei eines Geräts, das diese Anwendung kennt.</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>&quot;%1&quot; cannot be replayed.</source>
        <translation>Wiedergabe von „%1“ nicht möglich.</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>%1 (the recording was cut short; every complete frame replays)</source>
        <translation>%1 (die Aufzeichnung wurde vorzeitig abgebrochen; jeder vollständige Frame wird wiedergegeben)</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Replay - %1</source>
        <translation>Wiedergabe - %1</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Replay: %1</source>
        <translation>Wiedergabe: %1</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>Frame %1 of &quot;%2&quot; cannot be replayed.</source>
        <translation>Wiedergabe von Frame %1 aus „%2“ nicht möglich.</translation>
    </message>
    <message>
        <location line="+31"/>
        <source>of %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1 (+%2)</source>
        <translation>%1 (+%2)</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>no time</source>
        <translation>keine Zeit</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Extract frames %1 to %2</source>
        <translation>Frames %1 bis %2</translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <location line="+200"/>
        <location line="+34"/>
        <source>Extract Frames</source>
        <translation>Ausschnitt speichern</translation>
    </message>
    <message>
        <location line="-34"/>
        <source>Record Files (*.ptl)</source>
        <translation>Aufzeichnungsdateien (*.ptl)</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>The frames cannot be extracted into the file they come from.</source>
        <translation>Speichern des Ausschnitts in die Datei, aus der er stammt, nicht möglich.</translation>
    </message>
    <message>
        <location line="+24"/>
        <source>Extracting frames %1 to %2...</source>
        <translation>Frames %1 bis %2 werden als Ausschnitt gespeichert...</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>The frames could not be written to &quot;%1&quot;.</source>
        <translation>Die Frames konnten nicht in „%1“ geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>PxRecorder</name>
    <message>
        <location filename="../parvex/recording/PxRecorder.cpp" line="+139"/>
        <source>Failed to create recording directory.</source>
        <translation>Das Aufzeichnungsverzeichnis konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <location line="+258"/>
        <source>Recording stopped: the record file could not be written. The frames recorded until then are kept.
%1</source>
        <translation>Aufzeichnung beendet: Die Aufzeichnungsdatei konnte nicht geschrieben werden. Die bis dahin aufgezeichneten Frames bleiben erhalten.
%1</translation>
    </message>
</context>
<context>
    <name>PxResultState</name>
    <message>
        <location filename="../parvex/results/PxResultState.cpp" line="+15"/>
        <source>Measurement Rate: </source>
        <translation>Messrate: </translation>
    </message>
</context>
<context>
    <name>PxSensor</name>
    <message>
        <location filename="../parvex/results/PxSensor.cpp" line="+43"/>
        <source>Length:</source>
        <translation>Länge:</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Refresh Rate:</source>
        <translation>Aktualisierungsrate:</translation>
    </message>
</context>
<context>
    <name>PxSensorUi</name>
    <message>
        <location filename="../parvex/deviceui/PxSensorUi.cpp" line="+70"/>
        <location line="+65"/>
        <source>Start Recording</source>
        <translation>Aufzeichnung starten</translation>
    </message>
    <message>
        <location line="-64"/>
        <location line="+65"/>
        <source>Start Data Logging</source>
        <translation>Datenprotokollierung starten</translation>
    </message>
    <message>
        <location line="-64"/>
        <source>State</source>
        <translation>Systemzustand</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+321"/>
        <source>Raw Traces</source>
        <translation>Roh-Signalverläufe</translation>
    </message>
    <message>
        <location line="-320"/>
        <location line="+322"/>
        <source>Filtered Traces</source>
        <translation>Gefilterte Signalverläufe</translation>
    </message>
    <message>
        <location line="-321"/>
        <source>Raw Detections</source>
        <translation>Roh-Echos</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Calibration...</source>
        <translation>Kalibrierung...</translation>
    </message>
    <message>
        <location line="+58"/>
        <source>Stop Recording</source>
        <translation>Aufzeichnung beenden</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Stop Data Logging</source>
        <translation>Datenprotokollierung beenden</translation>
    </message>
    <message>
        <location line="+176"/>
        <source>Cannot start recording while there are unapplied changes.</source>
        <translation>Starten der Aufzeichnung nicht möglich, solange es nicht übernommene Änderungen gibt.</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Cannot start logging while there are unapplied changes.</source>
        <translation>Starten der Datenprotokollierung nicht möglich, solange es nicht übernommene Änderungen gibt.</translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Record </source>
        <translation>Aufzeichnung </translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Log </source>
        <translation>Protokoll </translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+33"/>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <location line="-31"/>
        <location line="+33"/>
        <source>Directory:</source>
        <translation>Verzeichnis:</translation>
    </message>
    <message>
        <location line="-31"/>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>How Long</source>
        <translation>Wie lange</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Maximum file size (MB):</source>
        <translation>Maximale Dateigröße (MB):</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Maximum record time (minutes):</source>
        <translation>Maximale Aufzeichnungsdauer (Minuten):</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Recorder</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Data Logger</source>
        <translation>Protokollierung</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Recording Directory</source>
        <translation>Aufzeichnungsverzeichnis</translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Logging Directory</source>
        <translation>Protokollverzeichnis</translation>
    </message>
</context>
<context>
    <name>PxSerialPortForm</name>
    <message>
        <location filename="../parvex/frame/PxSerialPortForm.cpp" line="+49"/>
        <source>Serial Port Viewer</source>
        <translation>Monitor serielle Schnittstelle</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>List the serial ports again</source>
        <translation>Die seriellen Schnittstellen erneut auflisten</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Even</source>
        <translation>Gerade</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Odd</source>
        <translation>Ungerade</translation>
    </message>
    <message>
        <location line="+14"/>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <location line="+13"/>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Port:</source>
        <translation>Schnittstelle:</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Device:</source>
        <translation>Gerät:</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Baud rate:</source>
        <translation>Baudrate:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Parity:</source>
        <translation>Parität:</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Data bits:</source>
        <translation>Datenbits:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Stop bits:</source>
        <translation>Stoppbits:</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Slave address:</source>
        <translation>Slave-Adresse:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Time-out:</source>
        <translation>Zeitlimit:</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Retries:</source>
        <translation>Wiederholungen:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Poll rate:</source>
        <translation>Abfragerate:</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+198"/>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <location line="-96"/>
        <source>Choose the serial port first.</source>
        <translation>Wählen Sie zuerst die serielle Schnittstelle.</translation>
    </message>
    <message>
        <location line="+5"/>
        <location line="+7"/>
        <source>No installed driver offers a device for the serial port.</source>
        <translation>Kein installierter Treiber bietet ein Gerät für die serielle Schnittstelle an.</translation>
    </message>
    <message>
        <location line="+13"/>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <location line="+37"/>
        <source>The serial port %1 is no longer available: %2</source>
        <translation>Die serielle Schnittstelle %1 ist nicht mehr verfügbar: %2</translation>
    </message>
    <message>
        <location line="+34"/>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Closed</source>
        <translation>Geschlossen</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>%1 at %2 Hz: %3 polls, %4 missed, %5 failed</source>
        <translation>%1 mit %2 Hz: %3 Abfragen, %4 verpasst, %5 fehlgeschlagen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Last failure: %1</source>
        <translation>Letzter Fehler: %1</translation>
    </message>
</context>
<context>
    <name>PxSerialPortListener</name>
    <message>
        <location filename="../parvex/frame/PxSerialPortListener.cpp" line="+50"/>
        <source>Type %1</source>
        <translation>Typ %1</translation>
    </message>
    <message>
        <location line="+93"/>
        <source>Register</source>
        <translation>Register</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Raw</source>
        <translation>Roh</translation>
    </message>
    <message>
        <location line="+41"/>
        <source>Register %1</source>
        <translation>Register %1</translation>
    </message>
</context>
<context>
    <name>PxSpinBox</name>
    <message>
        <location filename="../parvex/widgets/PxSpinBox.cpp" line="+59"/>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
</context>
<context>
    <name>PxStaticUi</name>
    <message>
        <location filename="../parvex/frame/PxStaticUi.cpp" line="+66"/>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Replay...</source>
        <translation>Wiedergabe...</translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+98"/>
        <source>Connect...</source>
        <translation>Verbinden...</translation>
    </message>
    <message>
        <location line="-97"/>
        <source>User Guide...</source>
        <translation>Benutzerhandbuch...</translation>
    </message>
    <message>
        <location line="+48"/>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <location line="+44"/>
        <source>Disconnect...</source>
        <translation>Trennen...</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Serial Port Viewer</source>
        <translation>Monitor serielle Schnittstelle</translation>
    </message>
    <message>
        <location line="+10"/>
        <source>disconnect</source>
        <translation>die Verbindung trennen</translation>
    </message>
    <message>
        <location line="+44"/>
        <source>Some properties are modified.</source>
        <translation>Einige Eigenschaften wurden geändert.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Do you really want to %1?</source>
        <translation>Möchten Sie wirklich %1?</translation>
    </message>
    <message>
        <location line="+50"/>
        <source>close the application</source>
        <translation>die Anwendung schließen</translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <location line="+51"/>
        <source>This device is currently working in limited mode. Some features are not available.</source>
        <translation>Dieses Gerät arbeitet zurzeit im eingeschränkten Modus. Einige Funktionen sind nicht verfügbar.</translation>
    </message>
    <message>
        <location line="+17"/>
        <source>The device you are connecting to has a non-standard firmware version.</source>
        <translation>Das Gerät, mit dem Sie sich verbinden, hat eine Firmware-Version außerhalb des Standards.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Please contact technical support if you encounter problems.</source>
        <translation>Bitte wenden Sie sich bei Problemen an den technischen Support.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The device you are connecting to has a more recent firmware</source>
        <translation>Das Gerät, mit dem Sie sich verbinden, hat eine neuere Firmware</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>version than the configuration software on your computer.</source>
        <translation>als die Konfigurationssoftware auf Ihrem Computer.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Do you still want to connect?</source>
        <translation>Möchten Sie die Verbindung trotzdem herstellen?</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>The software in your %1 device is not up to date.</source>
        <translation>Die Software in Ihrem Gerät %1 ist nicht aktuell.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Do you want to update to the latest version?</source>
        <translation>Möchten Sie auf die neueste Version aktualisieren?</translation>
    </message>
</context>
<context>
    <name>PxSystemStateForm</name>
    <message>
        <location filename="../parvex/displays/PxSystemStateForm.cpp" line="+38"/>
        <source>System State</source>
        <translation>Systemzustand</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Device Information</source>
        <translation>Geräteinformationen</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Timers &amp;&amp; Load</source>
        <translation>Timer &amp;&amp; Auslastung</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Elapsed Time:</source>
        <translation>Verstrichene Zeit:</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Acquisition State</source>
        <translation>Erfassungszustand</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Device State</source>
        <translation>Gerätezustand</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <location line="+82"/>
        <source>Factory</source>
        <translation>Werk</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Upgrade</source>
        <translation>Upgrade</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Serial Number: </source>
        <translation>Seriennummer: </translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Version: FPGA: %1.%2  Software: %3 (%4)  CRC: %5</source>
        <translation>Version: FPGA: %1.%2  Software: %3 (%4)  CRC: %5</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Part Numbers: Hardware: %1  Software: %2</source>
        <translation>Teilenummern: Hardware: %1  Software: %2</translation>
    </message>
</context>
<context>
    <name>PxTraceForm</name>
    <message>
        <location filename="../parvex/displays/PxTraceForm.cpp" line="+38"/>
        <source>Segments:</source>
        <translation>Segmente:</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+18"/>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <location line="-7"/>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Set Offsets</source>
        <translation>Versätze setzen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Traces at their normal position</source>
        <translation>Signalverläufe in Normallage</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Separate Traces</source>
        <translation>Signalverläufe trennen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Show segment</source>
        <translation>Segment anzeigen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Show All Segments</source>
        <translation>Alle Segmente anzeigen</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Hide All Segments</source>
        <translation>Alle Segmente ausblenden</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Show Segment Panel</source>
        <translation>Segmentleiste anzeigen</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Increase Trace Width</source>
        <translation>Linienstärke vergrößern</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Decrease Trace Width</source>
        <translation>Linienstärke verkleinern</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Increase Trace Spacing</source>
        <translation>Abstand der Signalverläufe vergrößern</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Decrease Trace Spacing</source>
        <translation>Abstand der Signalverläufe verkleinern</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Markers</source>
        <translation>Markierungen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Square</source>
        <translation>Quadrat</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Reverse Video</source>
        <translation>Invertierte Darstellung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>View Grid</source>
        <translation>Gitter anzeigen</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Trace Display</source>
        <translation>Signalverlaufsanzeige</translation>
    </message>
    <message>
        <location line="+29"/>
        <source>%1</source>
        <translation>%1</translation>
    </message>
</context>
<context>
    <name>PxTraceWidget</name>
    <message>
        <location filename="../parvex/displays/PxTraceWidget.cpp" line="+624"/>
        <location line="+39"/>
        <source>Segment</source>
        <translation>Segment</translation>
    </message>
    <message>
        <location line="-38"/>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Base</source>
        <translation>Basis</translation>
    </message>
</context>
<context>
    <name>PxUnits</name>
    <message>
        <location filename="../parvex/model/PxUnits.cpp" line="+94"/>
        <source>meters</source>
        <translation>Meter</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>feet</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <location line="+8"/>
        <location filename="../parvex/model/PxUnitsPreferences.cpp" line="+58"/>
        <source>Celsius</source>
        <translation>Celsius</translation>
    </message>
    <message>
        <location line="+2"/>
        <location filename="../parvex/model/PxUnitsPreferences.cpp" line="+1"/>
        <source>Fahrenheit</source>
        <translation>Fahrenheit</translation>
    </message>
    <message>
        <location line="+2"/>
        <location filename="../parvex/model/PxUnitsPreferences.cpp" line="+1"/>
        <source>Kelvin</source>
        <translation>Kelvin</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>km/h</source>
        <translation>km/h</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>MPH</source>
        <translation>MPH</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>radians</source>
        <translation>Radiant</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>degrees</source>
        <translation>Grad</translation>
    </message>
    <message>
        <location filename="../parvex/model/PxUnitsPreferences.cpp" line="-10"/>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Meter</source>
        <translation>Meter</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Foot</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
</context>
<context>
    <name>PxUpdateSelectDialog</name>
    <message>
        <location filename="../parvex/maintenance/PxUpdateSelectDialog.cpp" line="+13"/>
        <source>Firmware Update</source>
        <translation>Firmware-Update</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>No firmware is available for this device.</source>
        <translation>Für dieses Gerät ist keine Firmware verfügbar.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Select the firmware to install on the device:</source>
        <translation>Wählen Sie die Firmware, die auf dem Gerät installiert werden soll:</translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
</context>
</TS>
