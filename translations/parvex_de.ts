<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>PxBoolProperty</name>
    <message>
        <source>true</source>
        <translation>wahr</translation>
    </message>
    <message>
        <source>false</source>
        <translation>falsch</translation>
    </message>
</context>
<context>
    <name>PxCalibrationEditor</name>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Calibration of %1, serial number %2</source>
        <translation>Kalibrierung von %1, Seriennummer %2</translation>
    </message>
    <message>
        <source>This sensor has no calibration values.</source>
        <translation>Dieser Sensor hat keine Kalibrierungswerte.</translation>
    </message>
    <message>
        <source>Load...</source>
        <translation>Laden...</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <source>Write to Device</source>
        <translation>In das Gerät schreiben</translation>
    </message>
    <message>
        <source>Parvex</source>
        <translation>Parvex</translation>
    </message>
    <message>
        <source> Calibration Files (*.ptc)</source>
        <translation> Kalibrierungsdateien (*.ptc)</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>The calibration was written to the device.</source>
        <translation>Die Kalibrierung wurde in das Gerät geschrieben.</translation>
    </message>
    <message>
        <source>This calibration was saved from %1, serial number %2, on %3.

Do you want to write it to the connected %4, serial number %5?</source>
        <translation>Diese Kalibrierung wurde von %1, Seriennummer %2, am %3 gespeichert.

Möchten Sie sie in das verbundene Gerät %4, Seriennummer %5, schreiben?</translation>
    </message>
    <message>
        <source>The calibration of %1 was written to the device.</source>
        <translation>Die Kalibrierung aus %1 wurde in das Gerät geschrieben.</translation>
    </message>
    <message>
        <source>Enter comment</source>
        <translation>Kommentar eingeben</translation>
    </message>
    <message>
        <source>Comment (optional):</source>
        <translation>Kommentar (optional):</translation>
    </message>
    <message>
        <source>The calibration was saved to %1.</source>
        <translation>Die Kalibrierung wurde in %1 gespeichert.</translation>
    </message>
</context>
<context>
    <name>PxCodeUpdateDialog</name>
    <message>
        <source>Firmware Update</source>
        <translation>Firmware-Update</translation>
    </message>
    <message>
        <source>Do not switch the device off until the update has finished.</source>
        <translation>Schalten Sie das Gerät nicht aus, bevor das Update abgeschlossen ist.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation>Wird abgebrochen...</translation>
    </message>
    <message>
        <source>No firmware update is available for this device.</source>
        <translation>Für dieses Gerät ist kein Firmware-Update verfügbar.</translation>
    </message>
    <message>
        <source>The update was cancelled. The device keeps its previous firmware.</source>
        <translation>Das Update wurde abgebrochen. Das Gerät behält seine bisherige Firmware.</translation>
    </message>
    <message>
        <source>The connection to the device was lost during the update. The device keeps its previous firmware; connect to it again and repeat the update.</source>
        <translation>Die Verbindung zum Gerät ging während des Updates verloren. Das Gerät behält seine bisherige Firmware; verbinden Sie sich erneut mit ihm und wiederholen Sie das Update.</translation>
    </message>
    <message>
        <source>The firmware update failed: %1

The device keeps its previous firmware.</source>
        <translation>Das Firmware-Update ist fehlgeschlagen: %1

Das Gerät behält seine bisherige Firmware.</translation>
    </message>
    <message>
        <source>The firmware was updated. The device has restarted on it.</source>
        <translation>Die Firmware wurde aktualisiert. Das Gerät wurde mit ihr neu gestartet.</translation>
    </message>
</context>
<context>
    <name>PxCodeUpdateJob</name>
    <message>
        <source>The update was cancelled.</source>
        <translation>Das Update wurde abgebrochen.</translation>
    </message>
</context>
<context>
    <name>PxConnection</name>
    <message>
        <source>Communication error</source>
        <translation>Kommunikationsfehler</translation>
    </message>
</context>
<context>
    <name>PxConnectionDialog</name>
    <message>
        <source>Select a connection type:</source>
        <translation>Wählen Sie eine Verbindungsart:</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
</context>
<context>
    <name>PxDataLogger</name>
    <message>
        <source>Failed to create logging directory.</source>
        <translation>Das Protokollverzeichnis konnte nicht angelegt werden.</translation>
    </message>
</context>
<context>
    <name>PxDebugForm</name>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Memory:</source>
        <translation>Speicher:</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <source>Length (bytes):</source>
        <translation>Länge (Bytes):</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <source>This sensor has no memories to read.</source>
        <translation>Dieser Sensor hat keine lesbaren Speicher.</translation>
    </message>
    <message>
        <source>The address must be a hexadecimal number.</source>
        <translation>Die Adresse muss eine Hexadezimalzahl sein.</translation>
    </message>
    <message numerus="yes">
        <source>Read %n byte(s) of %1 at 0x%2.</source>
        <translation>
            <numerusform>%n Byte aus %1 bei 0x%2 gelesen.</numerusform>
            <numerusform>%n Bytes aus %1 bei 0x%2 gelesen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Read failed: %1</source>
        <translation>Lesen fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>The bytes to write must be pairs of hexadecimal digits.</source>
        <translation>Die zu schreibenden Bytes müssen Paare aus Hexadezimalziffern sein.</translation>
    </message>
    <message numerus="yes">
        <source>Wrote %n byte(s) to %1 at 0x%2.</source>
        <translation>
            <numerusform>%n Byte in %1 bei 0x%2 geschrieben.</numerusform>
            <numerusform>%n Bytes in %1 bei 0x%2 geschrieben.</numerusform>
        </translation>
    </message>
    <message>
        <source>Write failed: %1</source>
        <translation>Schreiben fehlgeschlagen: %1</translation>
    </message>
</context>
<context>
    <name>PxDevice</name>
    <message>
        <source>system error %1</source>
        <translation>Systemfehler %1</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>Schreiben von %1 nicht möglich: %2</translation>
    </message>
    <message>
        <source>The file %1 is incomplete: it was not written to the end.</source>
        <translation>Die Datei %1 ist unvollständig: Sie wurde nicht bis zum Ende geschrieben.</translation>
    </message>
    <message>
        <source>The file %1 is not a calibration file of this %2.</source>
        <translation>Die Datei %1 ist keine Kalibrierungsdatei dieses Geräts (%2).</translation>
    </message>
    <message>
        <source>The file %1 is not a configuration file of this %2.</source>
        <translation>Die Datei %1 ist keine Konfigurationsdatei dieses Geräts (%2).</translation>
    </message>
    <message>
        <source>The file %1 holds a value of property %2 that does not suit it (%3 values of %4 bytes).</source>
        <translation>Die Datei %1 enthält einen Wert der Eigenschaft %2, der nicht zu ihr passt (%3 Werte zu %4 Bytes).</translation>
    </message>
</context>
<context>
    <name>PxDeviceUi</name>
    <message>
        <source>Load Configuration...</source>
        <translation>Konfiguration laden...</translation>
    </message>
    <message>
        <source>Save Configuration...</source>
        <translation>Konfiguration speichern...</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Reset...</source>
        <translation>Zurücksetzen...</translation>
    </message>
    <message>
        <source>Update...</source>
        <translation>Firmware-Update...</translation>
    </message>
    <message>
        <source>Parvex</source>
        <translation>Parvex</translation>
    </message>
    <message>
        <source> Configuration Files (*.pto)</source>
        <translation> Konfigurationsdateien (*.pto)</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>Do you really want to reset?</source>
        <translation>Möchten Sie wirklich zurücksetzen?</translation>
    </message>
    <message>
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
        <source>Enter comment</source>
        <translation>Kommentar eingeben</translation>
    </message>
    <message>
        <source>Comment (optional):</source>
        <translation>Kommentar (optional):</translation>
    </message>
</context>
<context>
    <name>PxDocumentManager</name>
    <message>
        <source>Please select the document you want to display:</source>
        <translation>Bitte wählen Sie das Dokument, das angezeigt werden soll:</translation>
    </message>
</context>
<context>
    <name>PxEchoForm</name>
    <message>
        <source>Min Amplitude:</source>
        <translation>Min. Amplitude:</translation>
    </message>
    <message>
        <source>Max Amplitude:</source>
        <translation>Max. Amplitude:</translation>
    </message>
    <message>
        <source>Min Distance:</source>
        <translation>Min. Entfernung:</translation>
    </message>
    <message>
        <source>Max Distance:</source>
        <translation>Max. Entfernung:</translation>
    </message>
    <message>
        <source>Freeze</source>
        <translation>Einfrieren</translation>
    </message>
    <message>
        <source>Seg</source>
        <translation>Seg</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Flags</translation>
    </message>
    <message>
        <source>Raw Detections</source>
        <translation>Roh-Echos</translation>
    </message>
</context>
<context>
    <name>PxEchoesGraph</name>
    <message>
        <source>ATTENTION</source>
        <translation>ACHTUNG</translation>
    </message>
    <message>
        <source>Configuration modified. Use Apply button to confirm.</source>
        <translation>Konfiguration geändert. Mit „Übernehmen“ bestätigen.</translation>
    </message>
    <message>
        <source>Segment</source>
        <translation>Segment</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
</context>
<context>
    <name>PxProtocolReader</name>
    <message>
        <source>Protocol error</source>
        <translation>Protokollfehler</translation>
    </message>
</context>
<context>
    <name>PxRecordPlayerForm</name>
    <message>
        <source>0.25x</source>
        <translation>0,25x</translation>
    </message>
    <message>
        <source>0.5x</source>
        <translation>0,5x</translation>
    </message>
    <message>
        <source>Real time</source>
        <translation>Echtzeit</translation>
    </message>
    <message>
        <source>2x</source>
        <translation>2x</translation>
    </message>
    <message>
        <source>4x</source>
        <translation>4x</translation>
    </message>
    <message>
        <source>8x</source>
        <translation>8x</translation>
    </message>
    <message>
        <source>as fast as possible</source>
        <translation>so schnell wie möglich</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>Öffnen...</translation>
    </message>
    <message>
        <source>Choose a record file; the arrow lists the files replayed recently.</source>
        <translation>Wählen Sie eine Aufzeichnungsdatei; der Pfeil listet die zuletzt wiedergegebenen Dateien auf.</translation>
    </message>
    <message>
        <source>No record file open.</source>
        <translation>Keine Aufzeichnungsdatei geöffnet.</translation>
    </message>
    <message>
        <source>Device:</source>
        <translation>Gerät:</translation>
    </message>
    <message>
        <source>Serial number:</source>
        <translation>Seriennummer:</translation>
    </message>
    <message>
        <source>Date:</source>
        <translation>Datum:</translation>
    </message>
    <message>
        <source>Frames:</source>
        <translation>Frames:</translation>
    </message>
    <message>
        <source>Duration:</source>
        <translation>Dauer:</translation>
    </message>
    <message>
        <source>Position in the record; the frames follow while the slider is dragged.</source>
        <translation>Position in der Aufzeichnung; die Frames folgen, während der Schieberegler gezogen wird.</translation>
    </message>
    <message>
        <source>First frame</source>
        <translation>Erster Frame</translation>
    </message>
    <message>
        <source>One frame back</source>
        <translation>Ein Frame zurück</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>One frame forward</source>
        <translation>Ein Frame vor</translation>
    </message>
    <message>
        <source>Last frame</source>
        <translation>Letzter Frame</translation>
    </message>
    <message>
        <source>Frame:</source>
        <translation>Frame:</translation>
    </message>
    <message>
        <source>Recorded time of the frame shown, and its time from the first frame</source>
        <translation>Aufgezeichnete Zeit des angezeigten Frames und seine Zeit ab dem ersten Frame</translation>
    </message>
    <message>
        <source>Frame time:</source>
        <translation>Frame-Zeit:</translation>
    </message>
    <message>
        <source>Speed:</source>
        <translation>Geschwindigkeit:</translation>
    </message>
    <message>
        <source>Loop</source>
        <translation>Schleife</translation>
    </message>
    <message>
        <source>Start again at the first frame after the last</source>
        <translation>Nach dem letzten Frame wieder mit dem ersten beginnen</translation>
    </message>
    <message>
        <source>Start Tag</source>
        <translation>Startmarke</translation>
    </message>
    <message>
        <source>The frame shown starts the range to extract</source>
        <translation>Der angezeigte Frame beginnt den zu speichernden Ausschnitt</translation>
    </message>
    <message>
        <source>End Tag</source>
        <translation>Endmarke</translation>
    </message>
    <message>
        <source>The frame shown ends the range to extract</source>
        <translation>Der angezeigte Frame beendet den zu speichernden Ausschnitt</translation>
    </message>
    <message>
        <source>Extract...</source>
        <translation>Ausschnitt speichern...</translation>
    </message>
    <message>
        <source>Write the tagged frames to a new record file</source>
        <translation>Die markierten Frames in eine neue Aufzeichnungsdatei schreiben</translation>
    </message>
    <message>
        <source>No recent files</source>
        <translation>Keine zuletzt verwendeten Dateien</translation>
    </message>
    <message>
        <source>Replay a Record File</source>
        <translation>Aufzeichnungsdatei wiedergeben</translation>
    </message>
    <message>
        <source>Record Files (*.ptl);;All Files (*)</source>
        <translation>Aufzeichnungsdateien (*.ptl);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be replayed: it is not a record file of a device that this application knows.</source>
        <translation>Wiedergabe von „%1“ nicht möglich: Die Datei ist keine Aufzeichnungsdatei eines Geräts, das diese Anwendung kennt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be replayed.</source>
        <translation>Wiedergabe von „%1“ nicht möglich.</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>%1 (the recording was cut short; every complete frame replays)</source>
        <translation>%1 (die Aufzeichnung wurde vorzeitig abgebrochen; jeder vollständige Frame wird wiedergegeben)</translation>
    </message>
    <message>
        <source>Replay - %1</source>
        <translation>Wiedergabe - %1</translation>
    </message>
    <message>
        <source>Replay: %1</source>
        <translation>Wiedergabe: %1</translation>
    </message>
    <message>
        <source>Frame %1 of &quot;%2&quot; cannot be replayed.</source>
        <translation>Wiedergabe von Frame %1 aus „%2“ nicht möglich.</translation>
    </message>
    <message>
        <source>of %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>%1 (+%2)</source>
        <translation>%1 (+%2)</translation>
    </message>
    <message>
        <source>no time</source>
        <translation>keine Zeit</translation>
    </message>
    <message>
        <source>Extract frames %1 to %2</source>
        <translation>Frames %1 bis %2</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Extract Frames</source>
        <translation>Ausschnitt speichern</translation>
    </message>
    <message>
        <source>Record Files (*.ptl)</source>
        <translation>Aufzeichnungsdateien (*.ptl)</translation>
    </message>
    <message>
        <source>The frames cannot be extracted into the file they come from.</source>
        <translation>Speichern des Ausschnitts in die Datei, aus der er stammt, nicht möglich.</translation>
    </message>
    <message>
        <source>Extracting frames %1 to %2...</source>
        <translation>Frames %1 bis %2 werden als Ausschnitt gespeichert...</translation>
    </message>
    <message>
        <source>The frames could not be written to &quot;%1&quot;.</source>
        <translation>Die Frames konnten nicht in „%1“ geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>PxRecorder</name>
    <message>
        <source>Failed to create recording directory.</source>
        <translation>Das Aufzeichnungsverzeichnis konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Recording stopped: the record file could not be written. The frames recorded until then are kept.
%1</source>
        <translation>Aufzeichnung beendet: Die Aufzeichnungsdatei konnte nicht geschrieben werden. Die bis dahin aufgezeichneten Frames bleiben erhalten.
%1</translation>
    </message>
</context>
<context>
    <name>PxResultState</name>
    <message>
        <source>Measurement Rate: </source>
        <translation>Messrate: </translation>
    </message>
</context>
<context>
    <name>PxSensor</name>
    <message>
        <source>Length:</source>
        <translation>Länge:</translation>
    </message>
    <message>
        <source>Refresh Rate:</source>
        <translation>Aktualisierungsrate:</translation>
    </message>
</context>
<context>
    <name>PxSensorUi</name>
    <message>
        <source>Start Recording</source>
        <translation>Aufzeichnung starten</translation>
    </message>
    <message>
        <source>Start Data Logging</source>
        <translation>Datenprotokollierung starten</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Systemzustand</translation>
    </message>
    <message>
        <source>Raw Traces</source>
        <translation>Roh-Signalverläufe</translation>
    </message>
    <message>
        <source>Filtered Traces</source>
        <translation>Gefilterte Signalverläufe</translation>
    </message>
    <message>
        <source>Raw Detections</source>
        <translation>Roh-Echos</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Calibration...</source>
        <translation>Kalibrierung...</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Aufzeichnung beenden</translation>
    </message>
    <message>
        <source>Stop Data Logging</source>
        <translation>Datenprotokollierung beenden</translation>
    </message>
    <message>
        <source>Cannot start recording while there are unapplied changes.</source>
        <translation>Starten der Aufzeichnung nicht möglich, solange es nicht übernommene Änderungen gibt.</translation>
    </message>
    <message>
        <source>Cannot start logging while there are unapplied changes.</source>
        <translation>Starten der Datenprotokollierung nicht möglich, solange es nicht übernommene Änderungen gibt.</translation>
    </message>
    <message>
        <source>Record </source>
        <translation>Aufzeichnung </translation>
    </message>
    <message>
        <source>Log </source>
        <translation>Protokoll </translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Wo</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Verzeichnis:</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>How Long</source>
        <translation>Wie lange</translation>
    </message>
    <message>
        <source>Maximum file size (MB):</source>
        <translation>Maximale Dateigröße (MB):</translation>
    </message>
    <message>
        <source>Maximum record time (minutes):</source>
        <translation>Maximale Aufzeichnungsdauer (Minuten):</translation>
    </message>
    <message>
        <source>Recorder</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Data Logger</source>
        <translation>Protokollierung</translation>
    </message>
    <message>
        <source>Recording Directory</source>
        <translation>Aufzeichnungsverzeichnis</translation>
    </message>
    <message>
        <source>Logging Directory</source>
        <translation>Protokollverzeichnis</translation>
    </message>
</context>
<context>
    <name>PxSerialPortForm</name>
    <message>
        <source>Serial Port Viewer</source>
        <translation>Monitor serielle Schnittstelle</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>List the serial ports again</source>
        <translation>Die seriellen Schnittstellen erneut auflisten</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>Gerade</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>Ungerade</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>Schnittstelle:</translation>
    </message>
    <message>
        <source>Device:</source>
        <translation>Gerät:</translation>
    </message>
    <message>
        <source>Baud rate:</source>
        <translation>Baudrate:</translation>
    </message>
    <message>
        <source>Parity:</source>
        <translation>Parität:</translation>
    </message>
    <message>
        <source>Data bits:</source>
        <translation>Datenbits:</translation>
    </message>
    <message>
        <source>Stop bits:</source>
        <translation>Stoppbits:</translation>
    </message>
    <message>
        <source>Slave address:</source>
        <translation>Slave-Adresse:</translation>
    </message>
    <message>
        <source>Time-out:</source>
        <translation>Zeitlimit:</translation>
    </message>
    <message>
        <source>Retries:</source>
        <translation>Wiederholungen:</translation>
    </message>
    <message>
        <source>Poll rate:</source>
        <translation>Abfragerate:</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Choose the serial port first.</source>
        <translation>Wählen Sie zuerst die serielle Schnittstelle.</translation>
    </message>
    <message>
        <source>No installed driver offers a device for the serial port.</source>
        <translation>Kein installierter Treiber bietet ein Gerät für die serielle Schnittstelle an.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>The serial port %1 is no longer available: %2</source>
        <translation>Die serielle Schnittstelle %1 ist nicht mehr verfügbar: %2</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Closed</source>
        <translation>Geschlossen</translation>
    </message>
    <message>
        <source>%1 at %2 Hz: %3 polls, %4 missed, %5 failed</source>
        <translation>%1 mit %2 Hz: %3 Abfragen, %4 verpasst, %5 fehlgeschlagen</translation>
    </message>
    <message>
        <source>Last failure: %1</source>
        <translation>Letzter Fehler: %1</translation>
    </message>
</context>
<context>
    <name>PxSerialPortListener</name>
    <message>
        <source>Type %1</source>
        <translation>Typ %1</translation>
    </message>
    <message>
        <source>Register</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Raw</source>
        <translation>Roh</translation>
    </message>
    <message>
        <source>Register %1</source>
        <translation>Register %1</translation>
    </message>
</context>
<context>
    <name>PxSpinBox</name>
    <message>
        <source>Disabled</source>
        <translation>Deaktiviert</translation>
    </message>
</context>
<context>
    <name>PxStaticUi</name>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Replay...</source>
        <translation>Wiedergabe...</translation>
    </message>
    <message>
        <source>Connect...</source>
        <translation>Verbinden...</translation>
    </message>
    <message>
        <source>User Guide...</source>
        <translation>Benutzerhandbuch...</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Disconnect...</source>
        <translation>Trennen...</translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Serial Port Viewer</source>
        <translation>Monitor serielle Schnittstelle</translation>
    </message>
    <message>
        <source>disconnect</source>
        <translation>die Verbindung trennen</translation>
    </message>
    <message>
        <source>Some properties are modified.</source>
        <translation>Einige Eigenschaften wurden geändert.</translation>
    </message>
    <message>
        <source>Do you really want to %1?</source>
        <translation>Möchten Sie wirklich %1?</translation>
    </message>
    <message>
        <source>close the application</source>
        <translation>die Anwendung schließen</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>This device is currently working in limited mode. Some features are not available.</source>
        <translation>Dieses Gerät arbeitet zurzeit im eingeschränkten Modus. Einige Funktionen sind nicht verfügbar.</translation>
    </message>
    <message>
        <source>The device you are connecting to has a non-standard firmware version.</source>
        <translation>Das Gerät, mit dem Sie sich verbinden, hat eine Firmware-Version außerhalb des Standards.</translation>
    </message>
    <message>
        <source>Please contact technical support if you encounter problems.</source>
        <translation>Bitte wenden Sie sich bei Problemen an den technischen Support.</translation>
    </message>
    <message>
        <source>The device you are connecting to has a more recent firmware</source>
        <translation>Das Gerät, mit dem Sie sich verbinden, hat eine neuere Firmware</translation>
    </message>
    <message>
        <source>version than the configuration software on your computer.</source>
        <translation>als die Konfigurationssoftware auf Ihrem Computer.</translation>
    </message>
    <message>
        <source>Do you still want to connect?</source>
        <translation>Möchten Sie die Verbindung trotzdem herstellen?</translation>
    </message>
    <message>
        <source>The software in your %1 device is not up to date.</source>
        <translation>Die Software in Ihrem Gerät %1 ist nicht aktuell.</translation>
    </message>
    <message>
        <source>Do you want to update to the latest version?</source>
        <translation>Möchten Sie auf die neueste Version aktualisieren?</translation>
    </message>
</context>
<context>
    <name>PxSystemStateForm</name>
    <message>
        <source>System State</source>
        <translation>Systemzustand</translation>
    </message>
    <message>
        <source>Device Information</source>
        <translation>Geräteinformationen</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Timers &amp;&amp; Load</source>
        <translation>Timer &amp;&amp; Auslastung</translation>
    </message>
    <message>
        <source>Elapsed Time:</source>
        <translation>Verstrichene Zeit:</translation>
    </message>
    <message>
        <source>Acquisition State</source>
        <translation>Erfassungszustand</translation>
    </message>
    <message>
        <source>Device State</source>
        <translation>Gerätezustand</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Factory</source>
        <translation>Werk</translation>
    </message>
    <message>
        <source>Upgrade</source>
        <translation>Upgrade</translation>
    </message>
    <message>
        <source>Serial Number: </source>
        <translation>Seriennummer: </translation>
    </message>
    <message>
        <source>Version: FPGA: %1.%2  Software: %3 (%4)  CRC: %5</source>
        <translation>Version: FPGA: %1.%2  Software: %3 (%4)  CRC: %5</translation>
    </message>
    <message>
        <source>Part Numbers: Hardware: %1  Software: %2</source>
        <translation>Teilenummern: Hardware: %1  Software: %2</translation>
    </message>
</context>
<context>
    <name>PxTraceForm</name>
    <message>
        <source>Segments:</source>
        <translation>Segmente:</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Set Offsets</source>
        <translation>Versätze setzen</translation>
    </message>
    <message>
        <source>Traces at their normal position</source>
        <translation>Signalverläufe in Normallage</translation>
    </message>
    <message>
        <source>Separate Traces</source>
        <translation>Signalverläufe trennen</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Show segment</source>
        <translation>Segment anzeigen</translation>
    </message>
    <message>
        <source>Show All Segments</source>
        <translation>Alle Segmente anzeigen</translation>
    </message>
    <message>
        <source>Hide All Segments</source>
        <translation>Alle Segmente ausblenden</translation>
    </message>
    <message>
        <source>Show Segment Panel</source>
        <translation>Segmentleiste anzeigen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Increase Trace Width</source>
        <translation>Linienstärke vergrößern</translation>
    </message>
    <message>
        <source>Decrease Trace Width</source>
        <translation>Linienstärke verkleinern</translation>
    </message>
    <message>
        <source>Increase Trace Spacing</source>
        <translation>Abstand der Signalverläufe vergrößern</translation>
    </message>
    <message>
        <source>Decrease Trace Spacing</source>
        <translation>Abstand der Signalverläufe verkleinern</translation>
    </message>
    <message>
        <source>Markers</source>
        <translation>Markierungen</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Square</source>
        <translation>Quadrat</translation>
    </message>
    <message>
        <source>Circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>Reverse Video</source>
        <translation>Invertierte Darstellung</translation>
    </message>
    <message>
        <source>View Grid</source>
        <translation>Gitter anzeigen</translation>
    </message>
    <message>
        <source>Trace Display</source>
        <translation>Signalverlaufsanzeige</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
</context>
<context>
    <name>PxTraceWidget</name>
    <message>
        <source>Segment</source>
        <translation>Segment</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <source>Amplitude</source>
        <translation>Amplitude</translation>
    </message>
    <message>
        <source>Base</source>
        <translation>Basis</translation>
    </message>
</context>
<context>
    <name>PxUnits</name>
    <message>
        <source>meters</source>
        <translation>Meter</translation>
    </message>
    <message>
        <source>feet</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>Celsius</source>
        <translation>Celsius</translation>
    </message>
    <message>
        <source>Fahrenheit</source>
        <translation>Fahrenheit</translation>
    </message>
    <message>
        <source>Kelvin</source>
        <translation>Kelvin</translation>
    </message>
    <message>
        <source>km/h</source>
        <translation>km/h</translation>
    </message>
    <message>
        <source>MPH</source>
        <translation>MPH</translation>
    </message>
    <message>
        <source>radians</source>
        <translation>Radiant</translation>
    </message>
    <message>
        <source>degrees</source>
        <translation>Grad</translation>
    </message>
    <message>
        <source>Distance</source>
        <translation>Entfernung</translation>
    </message>
    <message>
        <source>Meter</source>
        <translation>Meter</translation>
    </message>
    <message>
        <source>Foot</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheiten</translation>
    </message>
</context>
<context>
    <name>PxUpdateSelectDialog</name>
    <message>
        <source>Firmware Update</source>
        <translation>Firmware-Update</translation>
    </message>
    <message>
        <source>No firmware is available for this device.</source>
        <translation>Für dieses Gerät ist keine Firmware verfügbar.</translation>
    </message>
    <message>
        <source>Select the firmware to install on the device:</source>
        <translation>Wählen Sie die Firmware, die auf dem Gerät installiert werden soll:</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
</context>
</TS>
