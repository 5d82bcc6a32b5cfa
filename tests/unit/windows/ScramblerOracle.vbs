' The scrambler and the random numbers as a script engine of the run-time computes them, for the tests to compare with.
' Lines: "R <n> <24-bit numbers of Rnd(-n) and the four draws after it>", "S <character codes> <scrambled text>".
Option Explicit
Dim n, i, text, codes, seed
Const KEY = "7Q%-k#"

Function Bits(x)
  Bits = CLng(x * 16777216)
End Function

Function Scramble(ByVal s)
  Dim prev, cur, v, digits, out, pos, digit
  If Len(s) < Len(KEY) Then s = s & Right(KEY, Len(KEY) - Len(s))
  If Len(s) > 12 Then s = Left(s, 12)
  prev = Asc(Left(s, 1))
  Dim k
  For k = 2 To Len(s)
    cur = Asc(Mid(s, k, 1))
    v = (CLng(prev) * CLng(prev)) Xor (cur * 103)
    digits = Oct(v)
    If Len(digits) >= 3 Then
      digits = Mid(digits, 2)
      digits = Right(digits, 1) & Left(digits, Len(digits) - 1)
    End If
    out = out & digits
    prev = cur
  Next
  Rnd -CSng(Left(out, 6))
  Do
    pos = CLng(Rnd() * Len(out) + 1)
    If Rnd() >= 0.5 Then digit = "8" Else digit = "9"
    out = Left(out, pos - 1) & digit & Mid(out, pos)
  Loop While Rnd() < 0.7
  Scramble = out
End Function

For n = 1 To 777777 Step 263
  text = "R " & n & " " & Bits(Rnd(-n))
  For i = 1 To 4
    text = text & " " & Bits(Rnd())
  Next
  WScript.Echo text
Next
For n = 1 To 40
  WScript.Echo "F " & n & " " & Bits(Rnd(CSng(-n / 7)))
Next

' Texts of 0 to 14 characters over the whole single-byte code page, from a generator of their own.
seed = 12345
For n = 0 To 299
  text = ""
  codes = "-"
  For i = 1 To n Mod 15
    seed = (seed * 1103 + 12289) Mod 65521
    text = text & Chr(32 + seed Mod 224)
    codes = codes & Asc(Right(text, 1)) & "-"
  Next
  WScript.Echo "S " & codes & " " & Scramble(text)
Next
