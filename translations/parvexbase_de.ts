<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>PtDocumentReader</name>
    <message>
        <source>(%1, offset %2)</source>
        <translation>(%1, Offset %2)</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>Lesen von %1 nicht möglich: %2</translation>
    </message>
</context>
<context>
    <name>PtDocumentWriter</name>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>Schreiben von %1 nicht möglich: %2</translation>
    </message>
</context>
<context>
    <name>PtErrorLogForm</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Error Log</source>
        <translation>Fehlerprotokoll</translation>
    </message>
    <message>
        <source>Copy the whole log to the clipboard</source>
        <translation>Das ganze Protokoll in die Zwischenablage kopieren</translation>
    </message>
</context>
<context>
    <name>PtException</name>
    <message>
        <source>Invalid value &quot;%1&quot; for %2 (site %3).</source>
        <translation>Ungültiger Wert „%1“ für %2 (Stelle %3).</translation>
    </message>
    <message>
        <source>Operation not supported by this object (logic error %1).</source>
        <translation>Dieses Objekt unterstützt die Operation nicht (Logikfehler %1).</translation>
    </message>
    <message>
        <source>The file has no header section; it is not a record file.</source>
        <translation>Die Datei hat keinen Kopfabschnitt; sie ist keine Aufzeichnungsdatei.</translation>
    </message>
    <message>
        <source>A frame was expected in the file but something else was found.</source>
        <translation>In der Datei wurde ein Frame erwartet, aber etwas anderes gefunden.</translation>
    </message>
    <message>
        <source>The file&apos;s header section is of an unknown kind.</source>
        <translation>Der Kopfabschnitt der Datei ist von unbekannter Art.</translation>
    </message>
    <message>
        <source>The file is not a Parvex document.</source>
        <translation>Die Datei ist kein Parvex-Dokument.</translation>
    </message>
    <message>
        <source>The document is not of the expected kind.</source>
        <translation>Das Dokument ist nicht von der erwarteten Art.</translation>
    </message>
    <message>
        <source>The document holds a damaged record.</source>
        <translation>Das Dokument enthält einen beschädigten Datensatz.</translation>
    </message>
    <message>
        <source>A record of the document runs past the section that holds it.</source>
        <translation>Ein Datensatz des Dokuments reicht über den Abschnitt hinaus, der ihn enthält.</translation>
    </message>
    <message>
        <source>The document&apos;s sections are nested too deeply.</source>
        <translation>Die Abschnitte des Dokuments sind zu tief verschachtelt.</translation>
    </message>
    <message>
        <source>An element of the document is shorter than expected.</source>
        <translation>Ein Element des Dokuments ist kürzer als erwartet.</translation>
    </message>
    <message>
        <source>The document was written by a newer version of the software.</source>
        <translation>Das Dokument wurde von einer neueren Version der Software geschrieben.</translation>
    </message>
    <message>
        <source>The document&apos;s index does not match its sections.</source>
        <translation>Das Inhaltsverzeichnis des Dokuments passt nicht zu seinen Abschnitten.</translation>
    </message>
    <message>
        <source>The document holds a section where a value was expected.</source>
        <translation>Das Dokument enthält einen Abschnitt, wo ein Wert erwartet wurde.</translation>
    </message>
    <message>
        <source>The file is damaged or not in the expected format (format error %1).</source>
        <translation>Die Datei ist beschädigt oder nicht im erwarteten Format (Formatfehler %1).</translation>
    </message>
</context>
<context>
    <name>PtFile</name>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>Lesen von %1 nicht möglich: %2</translation>
    </message>
    <message>
        <source>Cannot read %1: the file ends early.</source>
        <translation>Lesen von %1 nicht möglich: Die Datei endet vorzeitig.</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>Öffnen von %1 nicht möglich: %2</translation>
    </message>
</context>
<context>
    <name>PtMessageBox</name>
    <message>
        <source>Error code: %1</source>
        <translation>Fehlercode: %1</translation>
    </message>
</context>
<context>
    <name>PtModbus</name>
    <message>
        <source>Cannot open the serial port %1: %2</source>
        <translation>Öffnen der seriellen Schnittstelle %1 nicht möglich: %2</translation>
    </message>
    <message>
        <source>The serial port is not open.</source>
        <translation>Die serielle Schnittstelle ist nicht geöffnet.</translation>
    </message>
    <message>
        <source>A read is already under way.</source>
        <translation>Ein Lesevorgang läuft bereits.</translation>
    </message>
    <message>
        <source>The request could not be sent: %1</source>
        <translation>Die Anfrage konnte nicht gesendet werden: %1</translation>
    </message>
    <message>
        <source>The device refused the read (Modbus exception %1).</source>
        <translation>Das Gerät hat den Lesevorgang abgelehnt (Modbus-Ausnahme %1).</translation>
    </message>
    <message>
        <source>The device at address %1 did not answer on %2.</source>
        <translation>Das Gerät mit der Adresse %1 hat an %2 nicht geantwortet.</translation>
    </message>
    <message>
        <source>The serial port %1 went away.</source>
        <translation>Die serielle Schnittstelle %1 ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>The read was aborted.</source>
        <translation>Der Lesevorgang wurde abgebrochen.</translation>
    </message>
</context>
<context>
    <name>PtPreferencesDialog</name>
    <message>
        <source>Preferences</source>
        <translation>Optionen</translation>
    </message>
</context>
</TS>
