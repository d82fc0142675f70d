<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR" sourcelanguage="en">
<context>
    <name>BoxAdvice</name>
    <message>
        <source>The phone does not answer.</source>
        <translation>전화기가 응답하지 않습니다.</translation>
    </message>
    <message>
        <source>Switch it on. Check contacts, cable and supply, then start again.</source>
        <translation>전원을 켜 주십시오. 접점, 케이블, 전원 공급기를 확인한 뒤 다시 시작하십시오.</translation>
    </message>
    <message>
        <source>The last phone is still connected.</source>
        <translation>앞의 전화기가 아직 연결되어 있습니다.</translation>
    </message>
    <message>
        <source>Press OK and start again.</source>
        <translation>OK를 누르고 다시 시작하십시오.</translation>
    </message>
    <message>
        <source>There is no phone to be disconnected.</source>
        <translation>연결을 끊을 전화기가 없습니다.</translation>
    </message>
    <message>
        <source>Press OK and go on.</source>
        <translation>OK를 누르고 계속하십시오.</translation>
    </message>
    <message>
        <source>This station asks for one ahead of each run.</source>
        <translation>이 장비는 시험할 때마다 일련번호가 필요합니다.</translation>
    </message>
    <message>
        <source>Scan the phone&apos;s number.</source>
        <translation>전화기의 번호를 스캔하십시오.</translation>
    </message>
    <message>
        <source>The supply was not initialized.</source>
        <translation>전원 공급기가 초기화되지 않았습니다.</translation>
    </message>
    <message>
        <source>Press OK. Initialize the instruments behind the run, then run this phone again.</source>
        <translation>OK를 누르십시오. 시험이 끝난 뒤 계측기를 초기화하고 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The test set was not initialized.</source>
        <translation>테스트 세트가 초기화되지 않았습니다.</translation>
    </message>
    <message>
        <source>The run had no test set.</source>
        <translation>테스트 세트 없이 시험했습니다.</translation>
    </message>
    <message>
        <source>The load was not initialized.</source>
        <translation>전자 부하가 초기화되지 않았습니다.</translation>
    </message>
    <message>
        <source>The receiver&apos;s gain is wrong: FAIL follows.</source>
        <translation>수신기 이득이 잘못되었습니다. 불합격이 됩니다.</translation>
    </message>
    <message>
        <source>Check the antenna contact, then run this phone again.</source>
        <translation>안테나 접점을 확인한 뒤 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The phone reported no received power: FAIL follows.</source>
        <translation>전화기가 수신 전력을 보고하지 않았습니다. 불합격이 됩니다.</translation>
    </message>
    <message>
        <source>The test set sees no burst: FAIL follows.</source>
        <translation>테스트 세트에 버스트가 보이지 않습니다. 불합격이 됩니다.</translation>
    </message>
    <message>
        <source>Check the RF cable and the antenna contact, then run this phone again.</source>
        <translation>RF 케이블과 안테나 접점을 확인한 뒤 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The power that was measured is impossibly high.</source>
        <translation>측정된 전력이 있을 수 없을 만큼 높습니다.</translation>
    </message>
    <message>
        <source>Check the RF cable. Call an engineer if it comes again.</source>
        <translation>RF 케이블을 확인하십시오. 다시 나오면 엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>A channel of the transmitter could not be corrected.</source>
        <translation>송신기의 한 채널을 보정하지 못했습니다.</translation>
    </message>
    <message>
        <source>Press OK. Where the station then asks to be finished, Cancel goes on.</source>
        <translation>OK를 누르십시오. 이어서 종료할지 물으면 Cancel을 눌러 계속하십시오.</translation>
    </message>
    <message>
        <source>The station is about to end.</source>
        <translation>프로그램을 종료하려고 합니다.</translation>
    </message>
    <message>
        <source>OK ends it at once, Cancel goes on.</source>
        <translation>OK는 바로 종료하고, Cancel은 계속합니다.</translation>
    </message>
    <message>
        <source>The modulation is out of its limits.</source>
        <translation>변조가 한계를 벗어났습니다.</translation>
    </message>
    <message>
        <source>Press OK. The run goes on; the phone cannot pass complete any more.</source>
        <translation>OK를 누르십시오. 시험은 계속되지만 이 전화기는 완전한 합격이 될 수 없습니다.</translation>
    </message>
    <message>
        <source>The battery voltage that the phone counts is out of its window: FAIL follows.</source>
        <translation>전화기가 잰 배터리 전압이 범위를 벗어났습니다. 불합격이 됩니다.</translation>
    </message>
    <message>
        <source>Check the battery contacts, then run this phone again.</source>
        <translation>배터리 접점을 확인한 뒤 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The thresholds could not be stored in the phone: FAIL follows.</source>
        <translation>문턱값을 전화기에 저장하지 못했습니다. 불합격이 됩니다.</translation>
    </message>
    <message>
        <source>Run this phone again.</source>
        <translation>이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The phone has stopped answering.</source>
        <translation>전화기의 응답이 끊겼습니다.</translation>
    </message>
    <message>
        <source>Check the contacts, then run this phone again.</source>
        <translation>접점을 확인한 뒤 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The battery voltage could not be read.</source>
        <translation>배터리 전압을 읽지 못했습니다.</translation>
    </message>
    <message>
        <source>No phone is connected.</source>
        <translation>연결된 전화기가 없습니다.</translation>
    </message>
    <message>
        <source>The phone refused a setting, or was silent.</source>
        <translation>전화기가 설정을 거부했거나 응답하지 않았습니다.</translation>
    </message>
    <message>
        <source>Press OK. Check the contacts, and run this phone again behind this run.</source>
        <translation>OK를 누르십시오. 접점을 확인하고, 시험이 끝난 뒤 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>A data file of the station is missing: no phone can be calibrated.</source>
        <translation>장비의 데이터 파일이 없습니다. 어떤 전화기도 교정할 수 없습니다.</translation>
    </message>
    <message>
        <source>Call an engineer.</source>
        <translation>엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>The ramp tables of the station have empty values.</source>
        <translation>장비의 램프 표에 빈 값이 있습니다.</translation>
    </message>
    <message>
        <source>A file of that name exists.</source>
        <translation>같은 이름의 파일이 있습니다.</translation>
    </message>
    <message>
        <source>Yes replaces it, Cancel leaves it. Ask an engineer if you do not know it.</source>
        <translation>Yes는 바꾸고 Cancel은 그대로 둡니다. 모르면 엔지니어에게 물어보십시오.</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>디스크가 가득 찼습니다.</translation>
    </message>
    <message>
        <source>Call an engineer. What was saved before is untouched.</source>
        <translation>엔지니어를 부르십시오. 전에 저장한 것은 그대로 있습니다.</translation>
    </message>
    <message>
        <source>An instrument is absent or switched off.</source>
        <translation>계측기가 없거나 꺼져 있습니다.</translation>
    </message>
    <message>
        <source>Check its power and its cable, then start again.</source>
        <translation>계측기의 전원과 케이블을 확인한 뒤 다시 시작하십시오.</translation>
    </message>
    <message>
        <source>An instrument did not answer.</source>
        <translation>계측기가 응답하지 않았습니다.</translation>
    </message>
    <message>
        <source>The station itself is to be checked ahead of the next phone.</source>
        <translation>다음 전화기보다 먼저 장비 자체를 점검해야 합니다.</translation>
    </message>
    <message>
        <source>Put the golden unit in and scan its number, or call an engineer.</source>
        <translation>기준기를 넣고 번호를 스캔하거나 엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>The bench may still be under power.</source>
        <translation>작업대에 아직 전원이 들어와 있을 수 있습니다.</translation>
    </message>
    <message>
        <source>Switch the instrument off by hand before you touch the phone.</source>
        <translation>전화기를 만지기 전에 계측기를 손으로 끄십시오.</translation>
    </message>
    <message>
        <source>The station cannot go on before this is answered.</source>
        <translation>답하기 전에는 계속할 수 없습니다.</translation>
    </message>
    <message>
        <source>Press the first button. If it comes again, call an engineer and show it.</source>
        <translation>첫째 단추를 누르십시오. 다시 나오면 엔지니어를 불러 보여 주십시오.</translation>
    </message>
    <message>
        <source>The cable of the phone, or its adapter, is unplugged.</source>
        <translation>전화기의 케이블이나 어댑터가 빠졌습니다.</translation>
    </message>
    <message>
        <source>Plug it in, then run this phone again.</source>
        <translation>꽂은 뒤 이 전화기를 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>The last run has just ended without PASS.</source>
        <translation>앞의 시험이 합격 없이 방금 끝났습니다.</translation>
    </message>
    <message>
        <source>Press OK, wait a moment, then start again.</source>
        <translation>OK를 누르고 잠시 기다린 뒤 다시 시작하십시오.</translation>
    </message>
</context>
<context>
    <name>ConvergenceChart</name>
    <message>
        <source>Power search</source>
        <translation>전력 탐색</translation>
    </message>
    <message>
        <source>Pass</source>
        <translation>회차</translation>
    </message>
    <message>
        <source>Tolerance</source>
        <translation>허용 오차</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>목표</translation>
    </message>
    <message>
        <source>DAC</source>
        <translation>DAC</translation>
    </message>
    <message>
        <source>Power</source>
        <translation>전력</translation>
    </message>
    <message>
        <source>target %1 dBm</source>
        <translation>목표 %1 dBm</translation>
    </message>
    <message>
        <source>DAC %1, %2 of %3 dBm</source>
        <translation>DAC %1, %3 dBm 중 %2</translation>
    </message>
    <message>
        <source>No search yet</source>
        <translation>아직 탐색 없음</translation>
    </message>
</context>
<context>
    <name>OperatorPage</name>
    <message>
        <source>ORVANE</source>
        <translation>ORVANE</translation>
    </message>
    <message>
        <source>Engineer</source>
        <translation>엔지니어</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>종료</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>일련번호</translation>
    </message>
    <message>
        <source>Scan the serial number</source>
        <translation>일련번호를 스캔하십시오</translation>
    </message>
    <message>
        <source>Start (Enter)</source>
        <translation>시작 (Enter)</translation>
    </message>
    <message>
        <source>Stop (F12)</source>
        <translation>정지 (F12)</translation>
    </message>
    <message>
        <source>Progress of the run</source>
        <translation>시험 진행</translation>
    </message>
    <message>
        <source>%v of %m</source>
        <translation>%v / %m</translation>
    </message>
    <message>
        <source>Stop (F12): %1</source>
        <translation>정지 (F12): %1</translation>
    </message>
</context>
<context>
    <name>OperatorView</name>
    <message>
        <source>stops behind this level</source>
        <translation>이 레벨이 끝나면 멈춥니다</translation>
    </message>
    <message>
        <source>stops at the next step</source>
        <translation>다음 단계에서 멈춥니다</translation>
    </message>
    <message>
        <source>stops behind the receiver</source>
        <translation>수신 단계가 끝나면 멈춥니다</translation>
    </message>
    <message>
        <source>the result is being saved, it stops between two pieces</source>
        <translation>결과를 저장하는 중이며, 조각 사이에서 멈춥니다</translation>
    </message>
    <message>
        <source>the result is being saved</source>
        <translation>결과를 저장하는 중입니다</translation>
    </message>
    <message>
        <source>the result is saved, the battery is measured to its end</source>
        <translation>결과가 저장되었으며, 배터리 측정은 끝까지 진행됩니다</translation>
    </message>
    <message>
        <source>Scan the serial number of the unit first.</source>
        <translation>먼저 전화기의 일련번호를 스캔하십시오.</translation>
    </message>
    <message>
        <source>This is no serial number: it %1.</source>
        <translation>일련번호가 아닙니다: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no serial number of this product. Scan it again.</source>
        <translation>&quot;%1&quot;은(는) 이 제품의 일련번호가 아닙니다. 다시 스캔하십시오.</translation>
    </message>
    <message>
        <source>This unit passed on %1.</source>
        <translation>이 전화기는 %1에 합격했습니다.</translation>
    </message>
    <message>
        <source>dddd, d MMMM yyyy, HH:mm</source>
        <translation>yyyy년 M월 d일 dddd HH:mm</translation>
    </message>
    <message>
        <source>It is calibrated already.</source>
        <translation>이미 교정되었습니다.</translation>
    </message>
    <message>
        <source>Put it to the good ones, or run it again.</source>
        <translation>양품에 두거나 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>Run it again</source>
        <translation>다시 시험</translation>
    </message>
    <message>
        <source>Do not run it</source>
        <translation>시험 안 함</translation>
    </message>
    <message>
        <source>Engineer</source>
        <translation>엔지니어</translation>
    </message>
    <message>
        <source>The word</source>
        <translation>암호</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>Not ready for a unit</source>
        <translation>시험할 준비가 되지 않았습니다</translation>
    </message>
    <message>
        <source>Before the next unit</source>
        <translation>다음 전화기 전에</translation>
    </message>
    <message>
        <source>Initialize now</source>
        <translation>지금 초기화</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>계속</translation>
    </message>
    <message>
        <source>Look again</source>
        <translation>다시 확인</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>Where is the result to be saved?</source>
        <translation>결과를 어디에 저장합니까?</translation>
    </message>
    <message>
        <source>Which file is to be read?</source>
        <translation>어느 파일을 읽습니까?</translation>
    </message>
    <message>
        <source>The station is set to ask for a file.</source>
        <translation>파일을 묻도록 설정되어 있습니다.</translation>
    </message>
    <message>
        <source>Type its name, or press Cancel and call an engineer.</source>
        <translation>이름을 입력하거나 취소를 누르고 엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>Name of the file</source>
        <translation>파일 이름</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>확인</translation>
    </message>
    <message>
        <source>channel %1</source>
        <translation>채널 %1</translation>
    </message>
    <message>
        <source>level %1, pass %2</source>
        <translation>레벨 %1, %2회째</translation>
    </message>
    <message>
        <source>channel %1, pass %2</source>
        <translation>채널 %1, %2회째</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>○ No phone connected</source>
        <translation>○ 연결된 전화기 없음</translation>
    </message>
    <message>
        <source>✕ The phone does not answer</source>
        <translation>✕ 전화기 응답 없음</translation>
    </message>
    <message>
        <source>● Phone connected</source>
        <translation>● 전화기 연결됨</translation>
    </message>
    <message>
        <source>Record %1</source>
        <translation>기록 %1</translation>
    </message>
    <message>
        <source>The record lies beside the store. Call an engineer.</source>
        <translation>기록이 저장소 옆에 보관되었습니다. 엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>The record is lost. Call an engineer.</source>
        <translation>기록을 잃었습니다. 엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>VIRTUAL BENCH</source>
        <translation>가상 작업대</translation>
    </message>
    <message>
        <source>REAL BENCH</source>
        <translation>실제 작업대</translation>
    </message>
    <message>
        <source>asked for: %1. F12 takes it back</source>
        <translation>정지 요청됨: %1. F12로 취소</translation>
    </message>
    <message>
        <source>This needs the word of an engineer.</source>
        <translation>엔지니어의 암호가 필요합니다.</translation>
    </message>
    <message>
        <source>That is not the word.</source>
        <translation>암호가 아닙니다.</translation>
    </message>
    <message>
        <source>Too many wrong words: wait %1 seconds.</source>
        <translation>잘못된 암호가 너무 많습니다. %1초 기다리십시오.</translation>
    </message>
    <message>
        <source>The word before is still being looked at.</source>
        <translation>앞의 암호를 아직 확인하고 있습니다.</translation>
    </message>
    <message>
        <source>Why may units be run all the same?</source>
        <translation>왜 그래도 시험해도 됩니까?</translation>
    </message>
    <message>
        <source>The reason is kept in each record.</source>
        <translation>이유는 모든 기록에 남습니다.</translation>
    </message>
    <message>
        <source>The reason</source>
        <translation>이유</translation>
    </message>
    <message>
        <source>The station itself is to be checked</source>
        <translation>장비 자체를 점검해야 합니다</translation>
    </message>
    <message>
        <source>No other unit is run before the golden unit %1 was inside its limits.</source>
        <translation>기준기 %1이(가) 한계 안에 들 때까지 다른 전화기는 시험하지 않습니다.</translation>
    </message>
    <message>
        <source>Put the golden unit in and scan its number.</source>
        <translation>기준기를 넣고 번호를 스캔하십시오.</translation>
    </message>
    <message>
        <source>An engineer says why not</source>
        <translation>엔지니어가 이유를 말함</translation>
    </message>
    <message>
        <source>The golden unit is outside its limits</source>
        <translation>기준기가 한계를 벗어났습니다</translation>
    </message>
    <message>
        <source>No other unit is run before it was inside them. Call an engineer.</source>
        <translation>한계 안에 들 때까지 다른 전화기는 시험하지 않습니다. 엔지니어를 부르십시오.</translation>
    </message>
    <message>
        <source>ddd HH:mm</source>
        <translation>M월 d일 HH:mm</translation>
    </message>
    <message>
        <source>golden unit is due</source>
        <translation>기준기를 시험할 때입니다</translation>
    </message>
    <message>
        <source>golden unit due on %1</source>
        <translation>기준기 시험 예정 %1</translation>
    </message>
    <message>
        <source>golden unit was outside</source>
        <translation>기준기가 한계를 벗어났음</translation>
    </message>
    <message>
        <source>golden unit excused until %1</source>
        <translation>기준기 면제 %1까지</translation>
    </message>
    <message>
        <source>Waiting for the instrument at address %1: %2 s</source>
        <translation>주소 %1의 계측기를 기다리는 중: %2초</translation>
    </message>
    <message>
        <source>Waiting for the instrument at address %1, which %2 has: %3 s</source>
        <translation>%2이(가) 쓰고 있는 주소 %1의 계측기를 기다리는 중: %3초</translation>
    </message>
</context>
<context>
    <name>PageCard</name>
    <message>
        <source>Nothing was taken up. Read this, then press Enter alone.</source>
        <translation>입력을 받지 않았습니다. 읽은 다음 Enter만 누르십시오.</translation>
    </message>
</context>
<context>
    <name>Preflight</name>
    <message>
        <source>Call an engineer: a sound file is needed.</source>
        <translation>엔지니어를 부르십시오. 온전한 파일이 필요합니다.</translation>
    </message>
    <message>
        <source>Switch it on and let the station initialize it.</source>
        <translation>전원을 켜고 초기화를 누르십시오.</translation>
    </message>
    <message>
        <source>The test set is not initialized.</source>
        <translation>테스트 세트가 초기화되지 않았습니다.</translation>
    </message>
    <message>
        <source>The supply is not initialized.</source>
        <translation>전원 공급기가 초기화되지 않았습니다.</translation>
    </message>
    <message>
        <source>The load is not initialized.</source>
        <translation>전자 부하가 초기화되지 않았습니다.</translation>
    </message>
    <message>
        <source>The line to the phone, %1, is not there.</source>
        <translation>전화기 연결 장치 %1이(가) 없습니다.</translation>
    </message>
    <message>
        <source>Plug its adapter in.</source>
        <translation>어댑터를 꽂으십시오.</translation>
    </message>
    <message>
        <source>The line to the phone, %1, may not be opened.</source>
        <translation>전화기 연결 장치 %1을(를) 열 권한이 없습니다.</translation>
    </message>
    <message>
        <source>Call an engineer: this user needs the rights to it.</source>
        <translation>엔지니어를 부르십시오. 이 사용자에게 권한이 필요합니다.</translation>
    </message>
    <message>
        <source>The records of the runs cannot be kept: %1</source>
        <translation>시험 기록을 보관할 수 없습니다: %1</translation>
    </message>
    <message>
        <source>Call an engineer. It harms no phone.</source>
        <translation>엔지니어를 부르십시오. 전화기에는 해가 없습니다.</translation>
    </message>
    <message>
        <source>The losses of the cables were measured %1 days ago, %2 are allowed.</source>
        <translation>케이블 손실을 잰 지 %1일이 지났습니다. 허용은 %2일입니다.</translation>
    </message>
    <message>
        <source>Call an engineer: they are to be measured anew.</source>
        <translation>엔지니어를 부르십시오. 다시 측정해야 합니다.</translation>
    </message>
</context>
<context>
    <name>ShiftBoard</name>
    <message>
        <source>✓ PASS</source>
        <translation>✓ 합격</translation>
    </message>
    <message>
        <source>! not complete</source>
        <translation>! 불완전</translation>
    </message>
    <message>
        <source>✕ FAIL</source>
        <translation>✕ 불합격</translation>
    </message>
    <message>
        <source>○ no result</source>
        <translation>○ 결과 없음</translation>
    </message>
    <message>
        <source>units of this shift</source>
        <translation>이번 교대 수량</translation>
    </message>
    <message>
        <source>passed at once</source>
        <translation>한 번에 합격</translation>
    </message>
    <message>
        <source>seconds a unit</source>
        <translation>대당 초</translation>
    </message>
    <message>
        <source>%1 units of this shift</source>
        <translation>이번 교대 수량 %1</translation>
    </message>
    <message>
        <source>%1 passed at once</source>
        <translation>한 번에 합격 %1</translation>
    </message>
    <message>
        <source>%1 seconds a unit</source>
        <translation>대당 %1초</translation>
    </message>
</context>
<context>
    <name>StepTile</name>
    <message>
        <source>%1 min</source>
        <translation>%1분</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1초</translation>
    </message>
    <message>
        <source>waits</source>
        <translation>대기</translation>
    </message>
    <message>
        <source>goes on</source>
        <translation>진행 중</translation>
    </message>
    <message>
        <source>complete</source>
        <translation>완료</translation>
    </message>
    <message>
        <source>not complete</source>
        <translation>불완전</translation>
    </message>
</context>
<context>
    <name>Verdict</name>
    <message>
        <source>and %1 more</source>
        <translation>그 밖에 %1건</translation>
    </message>
    <message>
        <source>Every step was completed and everything is within its limits.</source>
        <translation>모든 단계를 마쳤고 모든 값이 한계 안에 있습니다.</translation>
    </message>
    <message>
        <source>Every step ran, but a measured value lies outside its limits (%1).</source>
        <translation>모든 단계를 마쳤지만 측정값이 한계를 벗어났습니다 (%1).</translation>
    </message>
    <message>
        <source>The unit is not calibrated: something was left out, failed or is not sure (%1).</source>
        <translation>교정되지 않았습니다. 빠졌거나 실패했거나 확실하지 않은 것이 있습니다 (%1).</translation>
    </message>
    <message>
        <source>A measurement was outside its window.</source>
        <translation>측정값이 범위를 벗어났습니다.</translation>
    </message>
    <message>
        <source>The unit failed in the step &quot;%1&quot;.</source>
        <translation>&quot;%1&quot; 단계에서 불합격했습니다.</translation>
    </message>
    <message>
        <source>The run ended without a verdict: this unit was not tested.</source>
        <translation>판정 없이 끝났습니다. 이 전화기는 시험되지 않았습니다.</translation>
    </message>
    <message>
        <source>Take the unit out. It is good.</source>
        <translation>전화기를 꺼내십시오. 양품입니다.</translation>
    </message>
    <message>
        <source>Take it through once more; if it ends so again, put it aside for repair.</source>
        <translation>한 번 더 시험하십시오. 다시 이렇게 끝나면 수리로 보내십시오.</translation>
    </message>
    <message>
        <source>Never ship it: mend what stands below, then take it through once more.</source>
        <translation>출하하지 마십시오. 아래 내용을 고친 뒤 한 번 더 시험하십시오.</translation>
    </message>
    <message>
        <source>Take it through once more; if it fails again, put it aside for repair.</source>
        <translation>한 번 더 시험하십시오. 다시 불합격이면 수리로 보내십시오.</translation>
    </message>
    <message>
        <source>Treat it as a unit that was not tested: take it through again.</source>
        <translation>시험하지 않은 전화기로 보고 다시 시험하십시오.</translation>
    </message>
    <message>
        <source>PASS</source>
        <translation>합격</translation>
    </message>
    <message>
        <source>OUT OF TOLERANCE</source>
        <translation>허용 오차 벗어남</translation>
    </message>
    <message>
        <source>NOT MEASURED</source>
        <translation>측정 안 됨</translation>
    </message>
    <message>
        <source>FAIL</source>
        <translation>불합격</translation>
    </message>
    <message>
        <source>NO RESULT</source>
        <translation>결과 없음</translation>
    </message>
    <message>
        <source>The run was stopped: this unit was not tested.</source>
        <translation>시험을 정지했습니다. 이 전화기는 시험되지 않았습니다.</translation>
    </message>
    <message>
        <source>The run was broken off: this unit was not tested.</source>
        <translation>시험이 중단되었습니다. 이 전화기는 시험되지 않았습니다.</translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation>수신</translation>
    </message>
    <message>
        <source>Transmitter DCS</source>
        <translation>송신 DCS</translation>
    </message>
    <message>
        <source>Transmitter GSM</source>
        <translation>송신 GSM</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>저장</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>배터리</translation>
    </message>
</context>
<context>
    <name>VerdictCover</name>
    <message>
        <source>Next unit (Enter)</source>
        <translation>다음 전화기 (Enter)</translation>
    </message>
    <message>
        <source>Nothing was taken up. Read the verdict, press Enter alone, then scan the next unit.</source>
        <translation>입력을 받지 않았습니다. 판정을 읽고 Enter만 누른 다음 다음 전화기를 스캔하십시오.</translation>
    </message>
</context>
</TS>
