<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ConfigWindow</name>
    <message>
        <source>Connected since %1</source>
        <translation>Verbunden seit %1</translation>
    </message>
    <message>
        <source>Parvex Configuration</source>
        <translation>Parvex-Konfiguration</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Optionen...</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Error log</source>
        <translation>&amp;Fehlerprotokoll</translation>
    </message>
    <message>
        <source>&amp;About parvex-config</source>
        <translation>Ü&amp;ber parvex-config</translation>
    </message>
    <message>
        <source>Main</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>%1 - Parvex Configuration</source>
        <translation>%1 - Parvex-Konfiguration</translation>
    </message>
    <message>
        <source>No sensor connected.

Connect one from the Device menu or the tool bar.</source>
        <translation>Kein Sensor verbunden.

Verbinden Sie einen Sensor über das Menü „Gerät“ oder die Werkzeugleiste.</translation>
    </message>
    <message>
        <source>%1 is connected.

Its live status is shown in the status bar.</source>
        <translation>%1 ist verbunden.

Sein aktueller Zustand wird in der Statusleiste angezeigt.</translation>
    </message>
    <message>
        <source>About parvex-config</source>
        <translation>Über parvex-config</translation>
    </message>
    <message>
        <source>&lt;b&gt;parvex-config&lt;/b&gt;&lt;br&gt;Configuration and monitoring of Parvex range-finding sensors.&lt;br&gt;Framework library %1, Qt %2.</source>
        <translation>&lt;b&gt;parvex-config&lt;/b&gt;&lt;br&gt;Konfiguration und Überwachung von Parvex-Entfernungssensoren.&lt;br&gt;Framework-Bibliothek %1, Qt %2.</translation>
    </message>
</context>
<context>
    <name>LiveStatus</name>
    <message>
        <source>TCP %1:%2</source>
        <translation>TCP %1:%2</translation>
    </message>
    <message>
        <source>built-in simulated sensor</source>
        <translation>Eingebauter simulierter Sensor</translation>
    </message>
    <message>
        <source>%1 - waiting for data...</source>
        <translation>%1 - warten auf Daten...</translation>
    </message>
    <message>
        <source>%1 - %2 frames at %3 Hz</source>
        <translation>%1 - %2 Frames mit %3 Hz</translation>
    </message>
</context>
<context>
    <name>PxSimConfigForm</name>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Identifier: 0x%1 (device id %2)</source>
        <translation>Kennung: 0x%1 (Geräte-ID %2)</translation>
    </message>
    <message>
        <source>Unit: %1</source>
        <translation>Einheit: %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Limits: %1 to %2 %3</source>
        <translation>Grenzen: %1 bis %2 %3</translation>
    </message>
    <message>
        <source>Limits: %1 to %2</source>
        <translation>Grenzen: %1 bis %2</translation>
    </message>
    <message>
        <source>Limits: one of %1</source>
        <translation>Grenzen: einer der Werte %1</translation>
    </message>
    <message>
        <source>Limits: on or off</source>
        <translation>Grenzen: ein oder aus</translation>
    </message>
    <message>
        <source>Limits: up to %1 characters</source>
        <translation>Grenzen: bis zu %1 Zeichen</translation>
    </message>
    <message>
        <source>Limits: any combination of %1 bits</source>
        <translation>Grenzen: beliebige Kombination von %1 Bits</translation>
    </message>
    <message>
        <source>%1 values, chosen with the number beside the field</source>
        <translation>%1 Werte, ausgewählt mit der Zahl neben dem Feld</translation>
    </message>
</context>
<context>
    <name>PxSimConnectionTypes</name>
    <message>
        <source>Simulated sensor</source>
        <translation>Simulierter Sensor</translation>
    </message>
    <message>
        <source>TCP</source>
        <translation>TCP</translation>
    </message>
    <message>
        <source>No driver is registered for the Parvex 16.</source>
        <translation>Für den Parvex 16 ist kein Treiber registriert.</translation>
    </message>
</context>
<context>
    <name>PxSimDeviceUi</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>FPGA %1  (%2)</source>
        <translation>FPGA %1  (%2)</translation>
    </message>
    <message>
        <source>Software %1  (%2)</source>
        <translation>Software %1  (%2)</translation>
    </message>
    <message>
        <source>%1  (damaged, cannot be installed)</source>
        <translation>%1  (beschädigt, Installation nicht möglich)</translation>
    </message>
</context>
<context>
    <name>PxSimDriver</name>
    <message>
        <source>Parvex 16</source>
        <translation>Parvex 16</translation>
    </message>
    <message>
        <source>Parvex 16 service port</source>
        <translation>Serviceschnittstelle des Parvex 16</translation>
    </message>
</context>
<context>
    <name>PxSimInProcessWidget</name>
    <message>
        <source>A simulated Parvex 16 runs inside this application: no network and nothing to set up. It behaves like a real sensor, with a synthetic scene.</source>
        <translation>Ein simulierter Parvex 16 läuft innerhalb dieser Anwendung: kein Netzwerk, nichts einzurichten. Er verhält sich wie ein echter Sensor, mit einer synthetischen Szene.</translation>
    </message>
    <message>
        <source>The simulated sensor could not be started: %1</source>
        <translation>Der simulierte Sensor konnte nicht gestartet werden: %1</translation>
    </message>
</context>
<context>
    <name>PxSimModbusListener</name>
    <message>
        <source>Frame counter</source>
        <translation>Frame-Zähler</translation>
    </message>
    <message>
        <source>Device time</source>
        <translation>Gerätezeit</translation>
    </message>
    <message>
        <source>Board temperature</source>
        <translation>Platinentemperatur</translation>
    </message>
    <message>
        <source>Light source temperature</source>
        <translation>Temperatur der Lichtquelle</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>Auslastung</translation>
    </message>
    <message>
        <source>Acquisition state</source>
        <translation>Erfassungszustand</translation>
    </message>
    <message>
        <source>Segment mask</source>
        <translation>Segmentmaske</translation>
    </message>
    <message>
        <source>Measurement rate</source>
        <translation>Messrate</translation>
    </message>
    <message>
        <source>(high word)</source>
        <translation>(höherwertiges Wort)</translation>
    </message>
    <message>
        <source>Reserved</source>
        <translation>Reserviert</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 °C</source>
        <translation>%1 °C</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
</context>
<context>
    <name>PxSimSensor</name>
    <message>
        <source>Serial number:</source>
        <translation>Seriennummer:</translation>
    </message>
    <message>
        <source>Hardware part number:</source>
        <translation>Hardware-Teilenummer:</translation>
    </message>
    <message>
        <source>Temperature scale:</source>
        <translation>Temperaturskalierung:</translation>
    </message>
    <message>
        <source>Timebase scale:</source>
        <translation>Zeitbasisskalierung:</translation>
    </message>
    <message>
        <source>Refresh rate:</source>
        <translation>Aktualisierungsrate:</translation>
    </message>
    <message>
        <source>Accumulation (pulses):</source>
        <translation>Akkumulation (Pulse):</translation>
    </message>
    <message>
        <source>Oversampling:</source>
        <translation>Überabtastung:</translation>
    </message>
    <message>
        <source>x%1</source>
        <translation>%1-fach</translation>
    </message>
    <message>
        <source>Baud rate:</source>
        <translation>Baudrate:</translation>
    </message>
    <message>
        <source>Light source power (%):</source>
        <translation>Leistung der Lichtquelle (%):</translation>
    </message>
    <message>
        <source>Smoothing:</source>
        <translation>Glättung:</translation>
    </message>
    <message>
        <source>Modbus address:</source>
        <translation>Modbus-Adresse:</translation>
    </message>
    <message>
        <source>Detection threshold:</source>
        <translation>Erkennungsschwelle:</translation>
    </message>
    <message>
        <source>Distance offset:</source>
        <translation>Entfernungsoffset:</translation>
    </message>
    <message>
        <source>High temperature limit:</source>
        <translation>Obere Temperaturgrenze:</translation>
    </message>
    <message>
        <source>Low temperature limit:</source>
        <translation>Untere Temperaturgrenze:</translation>
    </message>
    <message>
        <source>Noise removal</source>
        <translation>Rauschunterdrückung</translation>
    </message>
    <message>
        <source>Modbus enabled</source>
        <translation>Modbus aktiviert</translation>
    </message>
    <message>
        <source>Enabled segments:</source>
        <translation>Aktive Segmente:</translation>
    </message>
    <message>
        <source>Trace length (samples):</source>
        <translation>Länge des Signalverlaufs (Abtastwerte):</translation>
    </message>
    <message>
        <source>Location:</source>
        <translation>Standort:</translation>
    </message>
    <message>
        <source>Device name:</source>
        <translation>Gerätename:</translation>
    </message>
    <message>
        <source>Field of view:</source>
        <translation>Sichtfeld:</translation>
    </message>
    <message>
        <source>Segments:</source>
        <translation>Segmente:</translation>
    </message>
    <message>
        <source>Measurement</source>
        <translation>Messung</translation>
    </message>
    <message>
        <source>Light source and segments</source>
        <translation>Lichtquelle und Segmente</translation>
    </message>
    <message>
        <source>Temperature monitoring</source>
        <translation>Temperaturüberwachung</translation>
    </message>
    <message>
        <source>Communication</source>
        <translation>Kommunikation</translation>
    </message>
    <message>
        <source>Identification</source>
        <translation>Identifikation</translation>
    </message>
    <message>
        <source>Device constants</source>
        <translation>Gerätekonstanten</translation>
    </message>
    <message>
        <source>Parvex 16</source>
        <translation>Parvex 16</translation>
    </message>
    <message>
        <source>Temperature:</source>
        <translation>Temperatur:</translation>
    </message>
    <message>
        <source>Processor Load:</source>
        <translation>Prozessorauslastung:</translation>
    </message>
    <message>
        <source>Acquisition State:</source>
        <translation>Erfassungszustand:</translation>
    </message>
    <message>
        <source>Frame Counter:</source>
        <translation>Frame-Zähler:</translation>
    </message>
    <message>
        <source>%1 is not a firmware file.</source>
        <translation>%1 ist keine Firmware-Datei.</translation>
    </message>
    <message>
        <source>%1 is firmware for device type 0x%2, not for a Parvex 16.</source>
        <translation>%1 ist Firmware für den Gerätetyp 0x%2, nicht für einen Parvex 16.</translation>
    </message>
    <message>
        <source>%1 announces an image of %2 bytes.</source>
        <translation>%1 kündigt ein Abbild von %2 Bytes an.</translation>
    </message>
    <message>
        <source>%1 holds %2 image bytes instead of %3.</source>
        <translation>%1 enthält %2 Bytes Abbild statt %3.</translation>
    </message>
    <message>
        <source>%1 is damaged: its checksum does not match.</source>
        <translation>%1 ist beschädigt: Die Prüfsumme stimmt nicht.</translation>
    </message>
    <message>
        <source>RAM</source>
        <translation>RAM</translation>
    </message>
    <message>
        <source>Registers</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>Saved configuration</source>
        <translation>Gespeicherte Konfiguration</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>The device answered a memory read without its data.</source>
        <translation>Das Gerät hat eine Leseanfrage an den Speicher ohne Daten beantwortet.</translation>
    </message>
</context>
<context>
    <name>PxSimTcpWidget</name>
    <message>
        <source>host name or IP address</source>
        <translation>Hostname oder IP-Adresse</translation>
    </message>
    <message>
        <source>Host:</source>
        <translation>Hostname:</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>Portnummer:</translation>
    </message>
    <message>
        <source>Enter the host name or IP address of the sensor.</source>
        <translation>Geben Sie den Hostnamen oder die IP-Adresse des Sensors ein.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid host name or IP address.</source>
        <translation>„%1“ ist weder ein gültiger Hostname noch eine gültige IP-Adresse.</translation>
    </message>
    <message>
        <source>Enter a port number between 1 and 65535.</source>
        <translation>Geben Sie eine Portnummer zwischen 1 und 65535 ein.</translation>
    </message>
    <message>
        <source>Connecting to %1, port %2... (Cancel stops it)</source>
        <translation>Verbindung mit %1, Port %2 wird hergestellt... (Abbrechen beendet den Versuch)</translation>
    </message>
    <message>
        <source>%1 refused the connection on port %2. Check that the sensor (or parvex-sim) is running and that the port is right.</source>
        <translation>%1 hat die Verbindung an Port %2 abgelehnt. Prüfen Sie, ob der Sensor (oder parvex-sim) läuft und der Port stimmt.</translation>
    </message>
    <message>
        <source>The host &quot;%1&quot; could not be found. Check the spelling of the name, or enter the sensor&apos;s IP address.</source>
        <translation>Der Host „%1“ wurde nicht gefunden. Prüfen Sie die Schreibweise des Namens oder geben Sie die IP-Adresse des Sensors ein.</translation>
    </message>
    <message>
        <source>The network cannot reach %1. Check the address and that this computer is on the sensor&apos;s network.</source>
        <translation>%1 ist über das Netzwerk nicht erreichbar. Prüfen Sie die Adresse und ob dieser Computer im Netzwerk des Sensors ist.</translation>
    </message>
    <message>
        <source>%1 did not answer within %2 seconds. Check the address, the network cable, and that the sensor is switched on.</source>
        <translation>%1 hat nicht innerhalb von %2 Sekunden geantwortet. Prüfen Sie die Adresse, das Netzwerkkabel und ob der Sensor eingeschaltet ist.</translation>
    </message>
    <message>
        <source>Could not connect to %1, port %2: %3</source>
        <translation>Verbindung mit %1, Port %2 nicht möglich: %3</translation>
    </message>
    <message>
        <source>%1, port %2 accepted the connection, but no Parvex sensor answered there: %3</source>
        <translation>%1, Port %2 hat die Verbindung angenommen, aber dort hat kein Parvex-Sensor geantwortet: %3</translation>
    </message>
</context>
<context>
    <name>PxSimUpdateJob</name>
    <message>
        <source>Installing FPGA version %1 on the Parvex 16.</source>
        <translation>FPGA-Version %1 wird auf dem Parvex 16 installiert.</translation>
    </message>
    <message>
        <source>Installing software version %1 on the Parvex 16.</source>
        <translation>Softwareversion %1 wird auf dem Parvex 16 installiert.</translation>
    </message>
    <message>
        <source>The device is not connected.</source>
        <translation>Das Gerät ist nicht verbunden.</translation>
    </message>
</context>
<context>
    <name>PxTcpConnection</name>
    <message>
        <source>No answer within %1 ms</source>
        <translation>Keine Antwort innerhalb von %1 ms</translation>
    </message>
    <message>
        <source>The device did not answer within %1 ms</source>
        <translation>Das Gerät hat nicht innerhalb von %1 ms geantwortet</translation>
    </message>
</context>
<context>
    <name>StartupConnection</name>
    <message>
        <source>&quot;%1&quot; is not a device address; use sim, tcp://HOST:PORT or none.</source>
        <translation>„%1“ ist keine Geräteadresse; verwenden Sie sim, tcp://HOST:PORT oder none.</translation>
    </message>
    <message>
        <source>Could not connect to %1.

%2</source>
        <translation>Verbindung mit %1 nicht möglich.

%2</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Configure and monitor Parvex range-finding sensors.</source>
        <translation>Parvex-Entfernungssensoren konfigurieren und überwachen.</translation>
    </message>
    <message>
        <source>The sensor to connect to at start: sim (the built-in simulated sensor, the default), tcp://HOST:PORT, or none.</source>
        <translation>Der Sensor, mit dem beim Start verbunden wird: sim (der eingebaute simulierte Sensor, die Voreinstellung), tcp://HOST:PORT oder none.</translation>
    </message>
    <message>
        <source>Start the built-in simulated sensor on the previous firmware release, to try the update.</source>
        <translation>Den eingebauten simulierten Sensor mit der vorherigen Firmware-Version starten, um das Firmware-Update auszuprobieren.</translation>
    </message>
    <message>
        <source>Parvex Configuration User Guide</source>
        <translation>Benutzerhandbuch Parvex-Konfiguration</translation>
    </message>
</context>
</TS>
