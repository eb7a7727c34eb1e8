' A client in VBScript: loads a small plant, launches, reads recordsets and notices, hits an error, and tells what it saw.
Option Explicit

Dim session, facade, unit, group, executor, task, materials, calendar, other, orders, readings, rows, chapter, cost

' Other characters than the plain ones as \u and their UTF-16 units, which the database tells: a script host need not know
' them. One beyond the basic plane is two units, and half of it is no character.
Const plain = " !""#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\]^_`abcdefghijklmnopqrstuvwxyz{|}~"

Function CodeOf(character)
    CodeOf = session.Consultar("SELECT unicode('" & character & "') AS c").Campos.Item("c").Valor
End Function

Function Utf16(code)
    Utf16 = "\u" & LCase(Right("000" & Hex(code), 4))
End Function

Function Escaped(text)
    Dim i, code
    i = 1
    Do While i <= Len(text)
        If InStr(1, plain, Mid(text, i, 1), 0) > 0 Then
            Escaped = Escaped & Mid(text, i, 1)
        Else
            code = CodeOf(Mid(text, i, 1))
            If code = 65533 Then
                code = CodeOf(Mid(text, i, 2)) - 65536
                Escaped = Escaped & Utf16(55296 + code \ 1024) & Utf16(56320 + code Mod 1024)
                i = i + 1
            Else
                Escaped = Escaped & Utf16(code)
            End If
        End If
        i = i + 1
    Loop
End Function

Function Shown(value)
    If IsNull(value) Then
        Shown = "null"
    ElseIf IsEmpty(value) Then
        Shown = "empty"
    ElseIf VarType(value) = vbBoolean Then
        Shown = "false"
        If value Then Shown = "true"
    ElseIf VarType(value) = vbString Then
        Shown = """" & Escaped(value) & """"
    Else
        Shown = CStr(value)
    End If
End Function

' Characters that a script file may not hold as they are, from the database.
Function Character(code)
    Character = session.Consultar("SELECT char(" & code & ") AS c").Campos.Item("c").Valor
End Function

Sub Tell(label, value)
    WScript.Echo label & " = " & Shown(value)
End Sub

' What holds for this language alone: silent as long as it does.
Sub Expect(label, actual, expected)
    If actual <> expected Then WScript.Echo "FAILED " & label & ": " & actual & " instead of " & expected
End Sub

Sub TellRows(label, rows, columns)
    Dim line, column
    Tell label, rows.TotalRegistros
    rows.MoverPrimero
    Do Until rows.FinDeDatos
        line = ""
        For Each column In Split(columns, ",")
            line = line & " " & Shown(rows.Campos.Item(column).Valor)
        Next
        WScript.Echo " " & line
        rows.MoverSiguiente
    Loop
End Sub

Sub TellNotices(label, list)
    Dim i
    Tell label, list.Total
    For i = 1 To list.Total
        WScript.Echo "  " & Escaped(list.Elemento(i))
    Next
End Sub

' The report's second line tells time, program and computer.
Sub TellReport(description)
    Dim lines, i
    lines = Split(description, vbCrLf)
    For i = 0 To UBound(lines)
        If i <> 1 Then WScript.Echo "  " & Escaped(lines(i))
    Next
End Sub

' A run-time error's number comes with 0x800A0000, if the script host leaves that in.
Function NumberOf(number)
    NumberOf = number
    If (number And &HFFFF0000) = &H800A0000 Then NumberOf = number And &HFFFF&
End Function

Sub TellError(label)
    Tell label, NumberOf(Err.Number)
    TellReport Err.Description
    Err.Clear
End Sub

Set session = CreateObject("Perluma.SesionGlobal")
session.Abrir ":memory:", True, True
Tell "open", session.EstaAbierta
Set facade = CreateObject("Zontara.CGlobalPreventivo")
Expect "one object a property", facade.Boletin Is facade.Boletin, True
Expect "type name", TypeName(facade.Boletin), "_CBoletin"

' The catalogue. The last character lies beyond the basic plane.
unit = facade.UnidadLectura.Nuevo("Kil" & Character(243) & "metros N" & Character(186) & " 5 " & Character(128512))
group = facade.GrupoGama.Nuevo("Lubricaci" & Character(243) & "n", 1)
executor = facade.EjecutorGama.Nuevo("Mec" & Character(225) & "nicos", 1)
task = facade.Gama.Nuevo("Cambio de aceite", "Vaciar, filtro, llenar.", 1, group, executor, 1, "P", CCur(40.5), "1.5", "", "", _
    "Bloquear el motor", "", 0, 2, "", "cada 250 h")
TellRows "units", facade.UnidadLectura.Seleccionar, "SC_Unidad_Lectura,Descripcion"
Set materials = facade.MaterialGama
materials.AgregarItem 1, "Aceite, litro", 8.1, 5, task
cost = materials.CostoTotalMaterialesGama(task)
Expect "money", TypeName(cost), "Currency"
Tell "cost", cost

' Assets: null and the empty text are told apart.
session.Ejecutar "INSERT INTO Activo (ID_Activo, Descripcion, ID_Grupo_Activo, SC_Unidad_Lectura) VALUES " & _
    "('P-100', 'Bomba N" & Character(186) & " 1', '', 1), ('P-200', NULL, 'G', 1)"
TellRows "assets", session.Consultar("SELECT ID_Activo, Descripcion, ID_Grupo_Activo, Acumulado_Lectura FROM Activo"), _
    "ID_Activo,Descripcion,ID_Grupo_Activo,Acumulado_Lectura"

' Two synchronised assignments and a conventional one, a launch into bulletins and one into work orders.
Set calendar = facade.ImputacionPreventiva
Set other = CreateObject("Zontara.CImputacionPreventiva")
Set calendar.OTPreventivaGenerada = other.OTPreventivaGenerada
Tell "first", calendar.Nuevo("P-100", task, "2026-03-01", 0, 7, "Semanal", 1, 0, 0, "2026-03-01", "2026-02-26", "", "", 9, 0, _
    "", True, "aceite")
Tell "second", calendar.Nuevo("P-200", task, "2026-03-01", 0, 7, "Diaria", 1, 0, 0, "2026-03-01", "2026-02-26", "", "", 9, 0, _
    "", True, "aceite")
Tell "third", calendar.Nuevo("P-200", task, "2026-03-01", 0, 7, "Semanal", 1, 0, 0, "2026-01-01", "2026-01-01", "", "", 0, 0, _
    "1", False, "filtro")
Tell "launched", calendar.LanzarPreventivo(DateSerial(2026, 3, 5), 7, "Breve")
TellRows "bulletins", session.Consultar("SELECT * FROM Boletin"), _
    "SC_Boletin,SC_Imputacion_Preventiva,Fecha_Lanzamiento,Semana_Del_Ano,Nota"
Set orders = CreateObject("Zontara.CConfiguracionOTBoletin")
orders.CodigoEjecutorOT = executor
orders.EsEjecutorExterno = False
orders.PrioridadSolicitada = 2
Tell "launched into orders", calendar.LanzarPreventivoConvensional(DateSerial(2026, 3, 5), 7, "Breve", orders)
TellRows "orders", session.Consultar("SELECT * FROM Orden_Trabajo"), _
    "SC_Orden_Trabajo,ID_Activo,Descripcion,Prioridad,Hombres,Tiempo"
TellNotices "catalogue notices", calendar.CatalogoModificado
TellNotices "launch notices", other.OTPreventivaGenerada

' A meter reading, and the question.
Set readings = facade.LecturaEquipo
Tell "reading", readings.Nuevo("2026-03-05", "P-100", 1, 260, 260, 0, 0.5, "", "", CCur(12.3456), "")
chapter = "0"
Set rows = readings.ObtenerLecturas(DateSerial(2026, 3, 1), DateSerial(2026, 3, 31), chapter)
Expect "by reference", chapter, ""
Tell "readings", rows.TotalRegistros
Tell "overdue", facade.ElActivoTieneMantenimientoVencido("P-100", "2026-04-01")

' Errors, with the number and the report that the component raised.
On Error Resume Next
calendar.SeleccionarTodos ""
Expect "source", Err.Source, "HuntERR.ErrorIn"
TellError "refused statement"
readings.ObtenerLecturas DateSerial(2026, 3, 1), DateSerial(2026, 3, 31), "", 0, 0, "Nada"
TellError "unknown column"
facade.TerminarTransaccion
TellError "nothing to end"
facade.GrupoGama.Borrar "x"
Expect "what isn't a number", NumberOf(Err.Number), 13
Err.Clear
facade.GrupoGama.Nada
Expect "no such member", NumberOf(Err.Number), 438
Err.Clear
On Error Goto 0

facade.IniciarTransaccion
facade.GrupoGama.Nuevo "Se va", 2
Tell "depth", session.ProfundidadTransaccion
facade.AbortarTransaccion
TellRows "groups", facade.GrupoGama.Seleccionar, "SC_Grupo_Gama,Descripcion"

TellNotices "trace", session.Traza
session.Cerrar
